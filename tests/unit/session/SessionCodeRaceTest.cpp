// The session code that the agent issues again right after the plug-in itself ended an unused
// session: the poll thread's next status read finds the code state once more (4 -> 4), which
// is no state change, yet the waiting request must be told of the new code.
#include <gmock/gmock.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include "SessionTestSupport.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int32_t kSessionEnded = 1;
constexpr int32_t kCodeIssued = 4;

// Holds back the first status read that `holds` picks (on the poll thread, here) until the test
// lets it go; every other read passes. The hook keeps the gate alive while a read is in it.
class HeldStatusRead {
public:
    explicit HeldStatusRead(std::function<bool()> holds) {
        zelsim::setStatusReadHook([gate = gate_, holds = std::move(holds)] {
            std::unique_lock<std::mutex> lock(gate->mutex);
            if (gate->taken || !holds()) {
                return;
            }
            gate->taken = true;
            gate->changed.notify_all();
            gate->changed.wait(lock, [&] { return gate->released; });
        });
    }
    ~HeldStatusRead() {
        release();
        zelsim::setStatusReadHook(nullptr);
    }
    HeldStatusRead(const HeldStatusRead&) = delete;
    HeldStatusRead& operator=(const HeldStatusRead&) = delete;

    bool held() {
        std::lock_guard<std::mutex> lock(gate_->mutex);
        return gate_->taken;
    }

    void release() {
        std::lock_guard<std::mutex> lock(gate_->mutex);
        gate_->released = true;
        gate_->changed.notify_all();
    }

private:
    struct Gate {
        std::mutex mutex;
        std::condition_variable changed;
        bool taken = false;
        bool released = false;
    };
    std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
};

class SessionCodeRace : public SessionTest {
protected:
    // A session with the code "123456" handed out, and the agent's next code set up.
    void SetUp() override {
        SessionTest::SetUp();
        switchSupport(kRemoteSupportOn);
        ASSERT_EQ(askForCode(), "123456");
        zelsim::Session session = zelsim::session();
        session.codeOnInit = "654321";
        zelsim::setSession(session);
        zelsim::takeCalls();
        platform.tv().takeJournal();
    }

    // Asks for a code while the poll thread's status read is held back, and lets the read go
    // once the request has started the agent's new session. What the menu shows then.
    std::string askForCodeWhileThePollIsHeld(HeldStatusRead& read) {
        // Slower time while the request waits for the poll: its 60-second wait then lasts six
        // real seconds, ample time for the test to let the poll go on a loaded machine.
        platform.tv().setTimeScale(10);
        platform.tv().set(kSessionCodeKey, std::string("session0"));
        const bool started = eventually([] {
            const zelsim::Session session = zelsim::session();
            return session.state == kCodeIssued && session.code == std::string("654321");
        });
        read.release();
        platform.tv().setTimeScale(100);
        EXPECT_TRUE(started) << "the request started no new session";
        platform.tv().waitUntilDelivered();
        return std::get<std::string>(platform.tv().get(kSessionCodeKey));
    }

    // The session-code and notify writes since the previous look.
    std::pair<std::vector<std::string>, std::vector<int32_t>> sessionWrites() {
        std::vector<std::string> codes;
        std::vector<int32_t> notifications;
        for (const tvsim::JournalEntry& entry : platform.tv().takeJournal()) {
            if (entry.key == kSessionCodeKey) {
                codes.push_back(std::get<std::string>(entry.value));
            } else if (entry.key == kNotifyKey) {
                notifications.push_back(std::get<int32_t>(entry.value));
            }
        }
        return {codes, notifications};
    }
};

TEST_F(SessionCodeRace, RequestAfterThePollEndedTheUnusedSessionGetsTheNewCode) {
    // The poll thread ends the expired session; its next read, the one held here, comes only
    // after the request has made the agent issue a code again.
    HeldStatusRead read([] { return zelsim::session().state == kSessionEnded; });
    ASSERT_TRUE(eventually([&] { return read.held(); })) << "the poll never ended the session";

    EXPECT_EQ(askForCodeWhileThePollIsHeld(read), "654321");
    EXPECT_THAT(callNames(zelsim::takeCalls()), ElementsAre("ZelSessionTerm", "ZelSessionInit"));
    const auto [codes, notifications] = sessionWrites();
    EXPECT_THAT(codes, ElementsAre("sessionDefault", "654321"));
    EXPECT_THAT(notifications, IsEmpty());
}

TEST_F(SessionCodeRace, RequestThatEndsTheExpiredSessionItselfGetsTheNewCode) {
    // The poll thread's next read is held from now on, so the request is the one to find the
    // code expired and end the session.
    HeldStatusRead read([] { return true; });
    ASSERT_TRUE(eventually([&] { return read.held(); }));
    platform.tv().sleepFor(121.5);

    EXPECT_EQ(askForCodeWhileThePollIsHeld(read), "654321");
    EXPECT_THAT(callNames(zelsim::takeCalls()), ElementsAre("ZelSessionTerm", "ZelSessionInit"));
    const auto [codes, notifications] = sessionWrites();
    EXPECT_THAT(codes, ElementsAre("sessionDefault", "654321"));
    EXPECT_THAT(notifications, IsEmpty());
}

}  // namespace
}  // namespace norvane
