// The typed settings store as the plug-in's value handles and the TV itself see it.
#include <gtest/gtest.h>

#include "TvTestSupport.h"

namespace {

using tvsim::KeyType;
using tvsim::keyType;
using tvtest::connect;
using tvtest::ValueHandle;
using StringList = std::vector<std::string>;

TEST(TvKeyTypes, TypeWordNamesTheType) {
    EXPECT_EQ(keyType("marlo.sl2.i32.sound.main.volume"), KeyType::Int32);
    EXPECT_EQ(keyType("marlo.sl2.str.network.mac-address-ethernet"), KeyType::String);
    EXPECT_EQ(keyType("marlo.sl2.vstr.source.input.name"), KeyType::StringList);
    EXPECT_EQ(keyType("marlo.sl2.vint32.servicemode.tunerinfo.signallevels"), KeyType::Int32List);
    EXPECT_EQ(keyType("marlo.sl2.action.system.operate.dataModule"), KeyType::Action);
    EXPECT_STREQ(tvsim::keyTypeName(KeyType::Int32List), "vint32");
}

TEST(TvKeyTypes, IrregularKeysKeepTheirTypes) {
    EXPECT_EQ(keyType("marlo.sl2.system.action.send.key"), KeyType::Action);
    EXPECT_EQ(keyType("marlo.sl2.cec.input.names"), KeyType::StringList);
    // Their neighbours follow the regular scheme and so name no type.
    EXPECT_EQ(keyType("marlo.sl2.system.action.send"), KeyType::Invalid);
    EXPECT_EQ(keyType("marlo.sl2.cec.input.names.extra"), KeyType::Invalid);
}

TEST(TvKeyTypes, MalformedKeysAreInvalid) {
    for (const char* key :
         {"", "marlo.sl2.", "marlo.sl2.i32", "marlo.sl2.i32.", "marlo.sl2.i32..volume",
          "marlo.sl2.i32.volume.", "marlo.sl2.int.volume", "marlo.sl3.i32.volume",
          "Marlo.sl2.i32.volume", "marlo.sl2.i32.main volume", "xmarlo.sl2.i32.volume"}) {
        EXPECT_EQ(keyType(key), KeyType::Invalid) << '"' << key << '"';
    }
}

using TvSettings = tvtest::TvTest;

TEST_F(TvSettings, NeverSetKeysReadAsTheirTypesDefault) {
    EXPECT_EQ(connect("marlo.sl2.i32.video.overscan")->getInt32(), 0);
    std::string text = "stale";
    connect("marlo.sl2.str.app.setting.esn")->getString(text);
    EXPECT_EQ(text, "");
    StringList names{"stale"};
    connect("marlo.sl2.cec.input.names")->getStringVector(names);
    EXPECT_TRUE(names.empty());
    std::vector<int32_t> levels{7};
    connect("marlo.sl2.vint32.servicemode.tunerinfo.signallevels")->getInt32Vector(levels);
    EXPECT_TRUE(levels.empty());
    EXPECT_EQ(tv().get("marlo.sl2.vstr.bluetooth.device.list"), tvsim::Value(StringList{}));
}

TEST_F(TvSettings, StringKeyHoldingAListReadsAsListOrJoinedText) {
    const std::string key = "marlo.sl2.str.video.diagnosis.info";
    ASSERT_TRUE(tv().set(key, StringList{"1920", "1080", "p", "60", "", "YUV444"}));
    StringList list;
    connect(key)->getStringVector(list);
    EXPECT_EQ(list, (StringList{"1920", "1080", "p", "60", "", "YUV444"}));
    std::string text;
    connect(key)->getString(text);
    EXPECT_EQ(text, "1920,1080,p,60,,YUV444");
}

TEST_F(TvSettings, StringKeyHoldingTextReadsAsListOfOneOrNone) {
    const std::string key = "marlo.sl2.str.audio.diagnosis.info";
    ASSERT_TRUE(tv().set(key, std::string("PCM")));
    StringList list;
    connect(key)->getStringVector(list);
    EXPECT_EQ(list, StringList{"PCM"});
    ASSERT_TRUE(tv().set(key, std::string()));
    connect(key)->getStringVector(list);
    EXPECT_TRUE(list.empty());
}

TEST_F(TvSettings, TvRefusesValuesThatDoNotFitTheKey) {
    ASSERT_TRUE(tv().set("marlo.sl2.i32.sound.main.volume", 30));
    EXPECT_FALSE(tv().set("marlo.sl2.i32.sound.main.volume", std::string("31")));
    EXPECT_FALSE(tv().set("marlo.sl2.vstr.source.input.name", std::string("HDMI1")));
    EXPECT_FALSE(tv().set("marlo.sl2.vint32.servicemode.tunerinfo.signallevels", 5));
    EXPECT_FALSE(tv().set("marlo.sl2.action.system.factory.reset", 1));
    EXPECT_FALSE(tv().set("volume", 1));
    EXPECT_EQ(tv().get("marlo.sl2.i32.sound.main.volume"), tvsim::Value(30));
}

TEST_F(TvSettings, WrongTypedHandleOperationsReadEmptyAndChangeNothing) {
    ASSERT_TRUE(tv().set("marlo.sl2.str.basic.settings.country", std::string("Usa")));
    ASSERT_TRUE(tv().set("marlo.sl2.i32.sound.main.volume", 25));
    ValueHandle* country = connect("marlo.sl2.str.basic.settings.country");
    ValueHandle* volume = connect("marlo.sl2.i32.sound.main.volume");

    EXPECT_EQ(country->getInt32(), 0);
    std::vector<int32_t> numbers{1};
    country->getInt32Vector(numbers);
    EXPECT_TRUE(numbers.empty());
    std::string text = "stale";
    volume->getString(text);
    EXPECT_EQ(text, "");

    EXPECT_NE(country->setInt32(3), 0);
    EXPECT_NE(volume->setString("30"), 0);
    tvtest::ParameterList reply;
    EXPECT_NE(volume->onAction(reply, {}), 0);
    EXPECT_EQ(tv().get("marlo.sl2.str.basic.settings.country"), tvsim::Value(std::string("Usa")));
    EXPECT_EQ(tv().get("marlo.sl2.i32.sound.main.volume"), tvsim::Value(25));
}

}  // namespace
