// The live feed: bounded rings, the frame route kept apart, state snapshots, and what a page that
// falls behind is told.
#include <gtest/gtest.h>

#include <atomic>
#include <string>

#include "Feed.h"
#include "support/TextCount.h"

namespace agentsim::console {
namespace {

using testing_support::occurrences;

std::string drain(EventStream& stream) {
    std::string all;
    for (std::string text; !(text = stream.next([] {})).empty();) {
        all += text;
    }
    return all;
}

TEST(ConsoleFeed, KeepsTheNewestEntriesAndTheFrameRouteApart) {
    const auto feed = std::make_shared<Feed>(FeedLimits{3, 2, 4096});
    feed->add("tv", "first");
    for (int i = 0; i < 10; ++i) {
        feed->add("frame", "frame " + std::to_string(i));
    }
    feed->add({{"plugin", "second"}, {"agent", "third"}, {"frame", "frame 10"}});
    const std::vector<FeedEntry> kept = feed->entries();
    ASSERT_EQ(kept.size(), 5u);
    EXPECT_EQ(kept[0].text, "first") << "frames never push other entries out";
    EXPECT_EQ(kept[1].text, "frame 9");
    EXPECT_EQ(kept[2].text, "second");
    EXPECT_EQ(kept[4].text, "frame 10");
    EXPECT_LT(kept[1].seq, kept[2].seq);

    feed->add("host", "fourth");
    EXPECT_EQ(feed->entries()[0].text, "frame 9") << "the oldest other entry went";
}

TEST(ConsoleFeed, AStreamStartsWithTheStateAndSendsEntriesInOrder) {
    const auto feed = std::make_shared<Feed>();
    feed->setState("{\"a\":1}");
    feed->add({{"tv", "one"}, {"frame", "two"}, {"console", "three"}});
    const auto stream = feed->subscribe();
    const std::string text = drain(*stream);
    EXPECT_EQ(text.find("event: state\ndata: {\"a\":1}\n\n"), 0u);
    const size_t one = text.find("\"text\":\"one\"");
    const size_t two = text.find("\"text\":\"two\"");
    const size_t three = text.find("\"text\":\"three\"");
    ASSERT_NE(three, std::string::npos);
    EXPECT_LT(one, two);
    EXPECT_LT(two, three);
    EXPECT_EQ(occurrences(text, "event: entry\ndata: {"), 3);

    feed->setState("{\"a\":1}");
    EXPECT_EQ(drain(*stream), "") << "an unchanged state is not sent again";
    feed->setState("{\"a\":2}");
    EXPECT_EQ(drain(*stream), "event: state\ndata: {\"a\":2}\n\n");
}

TEST(ConsoleFeed, AWaitingStreamIsWokenOnceByTheNextEntry) {
    const auto feed = std::make_shared<Feed>();
    const auto stream = feed->subscribe();
    drain(*stream);
    std::atomic<int> wakes{0};
    EXPECT_EQ(stream->next([&] { ++wakes; }), "");
    EXPECT_EQ(stream->next([&] { wakes += 10; }), "") << "replaces the first wake";
    feed->add("tv", "news");
    EXPECT_EQ(wakes.load(), 10);
    feed->add("tv", "more");
    EXPECT_EQ(wakes.load(), 10) << "a wake is called once";
    EXPECT_EQ(occurrences(drain(*stream), "event: entry"), 2);
}

TEST(ConsoleFeed, AStreamThatFellBehindIsToldHowManyEntriesItMissed) {
    const auto feed = std::make_shared<Feed>(FeedLimits{4, 4, 4096});
    const auto stream = feed->subscribe();
    feed->add("tv", "seen");
    drain(*stream);
    for (int i = 0; i < 10; ++i) {
        feed->add("tv", std::to_string(i));
    }
    const std::string text = drain(*stream);
    EXPECT_NE(text.find("event: dropped\ndata: {\"count\":6}\n\n"), std::string::npos) << text;
    EXPECT_EQ(occurrences(text, "event: entry"), 4);

    const auto late = feed->subscribe();
    EXPECT_EQ(drain(*late).find("dropped"), std::string::npos)
        << "a new page starts at the oldest entry kept";
}

TEST(ConsoleFeed, LongTextsAreCutAtACharacterBoundary) {
    EXPECT_EQ(clipText("short", 10), "short");
    EXPECT_EQ(clipText("abcdefghij", 4), "abcd [cut: 10 bytes]");
    // "é" is two bytes: a cut inside it steps back before it.
    EXPECT_EQ(clipText("ab\xC3\xA9z", 3), "ab [cut: 5 bytes]");
    const auto feed = std::make_shared<Feed>(FeedLimits{10, 10, 8});
    feed->add("tv", std::string(100, 'x'));
    EXPECT_EQ(feed->entries()[0].text, "xxxxxxxx [cut: 100 bytes]");
}

TEST(ConsoleFeed, ABigBacklogGoesOutInPieces) {
    const auto feed = std::make_shared<Feed>();
    for (int i = 0; i < 600; ++i) {
        feed->add("tv", std::to_string(i));
    }
    const auto stream = feed->subscribe();
    EXPECT_EQ(occurrences(stream->next([] {}), "event: entry"), 256);
    EXPECT_EQ(occurrences(stream->next([] {}), "event: entry"), 256);
    EXPECT_EQ(occurrences(stream->next([] {}), "event: entry"), 88);
}

}  // namespace
}  // namespace agentsim::console
