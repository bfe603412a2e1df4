#include <gtest/gtest.h>

#include "zel/json/ZelJson.h"

namespace {

TEST(HostJsonReader, ParsesADocumentAndForgetsEarlierErrors) {
    ZelJson::Reader reader;
    ZelJson::Value root;
    ASSERT_FALSE(reader.parse("{", root));
    ASSERT_FALSE(reader.getFormattedErrorMessages().empty());

    ASSERT_TRUE(reader.parse(R"({"name": "tv", "sizes": [32, 55]})", root));
    EXPECT_TRUE(reader.getFormattedErrorMessages().empty());
    EXPECT_EQ(root["name"].asString(), "tv");
    EXPECT_EQ(root["sizes"][1].asInt(), 55);
}

TEST(HostJsonReader, ReportsWhereAMalformedDocumentFails) {
    ZelJson::Reader reader;
    ZelJson::Value root;
    EXPECT_FALSE(reader.parse("{\n  \"a\": 1,\n  \"b\": ]\n}", root));
    EXPECT_NE(reader.getFormattedErrorMessages().find("Line 3"), std::string::npos)
        << reader.getFormattedErrorMessages();
}

TEST(HostJsonReader, KeepsCommentsOnlyWhenAsked) {
    const std::string document = "{\n  // volume in percent\n  \"volume\": 30\n}";
    ZelJson::Reader reader;
    ZelJson::Value withComments;
    ZelJson::Value withoutComments;
    ASSERT_TRUE(reader.parse(document, withComments, true));
    ASSERT_TRUE(reader.parse(document, withoutComments, false));

    EXPECT_TRUE(withComments["volume"].hasComment(Json::commentBefore));
    EXPECT_FALSE(withoutComments["volume"].hasComment(Json::commentBefore));
    EXPECT_EQ(withoutComments["volume"].asInt(), 30);
}

}  // namespace
