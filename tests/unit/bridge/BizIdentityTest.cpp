#include "bridge/BizIdentity.h"

#include <cstdio>

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing_support::writeTvFile;

constexpr const char* kSerial = "marlo.sl2.str.nvfactory.materiel.serial";
constexpr const char* kMac = "marlo.sl2.str.network.mac-address-ethernet";
constexpr const char* kSeed = "Tkq7rLw_Zb3x-9mNp";

// The password rules, written out position by position.
std::string expectedPassword(const std::string& serial, const std::string& mac) {
    std::string password = kSeed;
    for (int i = 0; i < 17; ++i) {
        const int seed = static_cast<unsigned char>(kSeed[i]);
        if (i % 2 == 0 && i < static_cast<int>(serial.size())) {
            int c = static_cast<unsigned char>(serial[i]) | seed;
            if (c > 96) {
                c = '0' + c % 10;
            }
            password[i] = static_cast<char>(c);
        }
        if (i % 2 == 1 && i < static_cast<int>(mac.size())) {
            int c = static_cast<unsigned char>(mac[i]) & seed;
            if (c > 96) {
                c -= 32;
            } else if (c < 65) {
                c = c % 27 + 32 + i;
            }
            password[i] = static_cast<char>(c);
        }
    }
    return password;
}

TEST(BizPassword, HandWorkedVectors) {
    // 'A' | 'T' = 'U'; '4' & 'k' = 32, below 'A': 32 % 27 + 32 + 1 = '&'.
    EXPECT_EQ(BizGenerateZelPassword({"AB", "a4"}), "U&q7rLw_Zb3x-9mNp");
    // 0xFF | 'T' = 255, above 96: '0' + 5; 0xFF & 'k' = 'k', upper-cased.
    EXPECT_EQ(BizGenerateZelPassword({"\xff", "x\xff"}), "5Kq7rLw_Zb3x-9mNp");
    EXPECT_EQ(BizGenerateZelPassword({"only one part"}), kSeed);
    EXPECT_EQ(BizGenerateZelPassword({}), kSeed);
}

// At the serial's even positions no byte ORed with the seed's character gives 96 or 97 ("`" or
// "a"), so the edge of "above 96" cannot be seen there; at the MAC's position 1 ("k") it can.
TEST(BizPassword, MacCharactersAtTheEdgesOfTheLetters) {
    // 'a' & 'k' = 'a' (97): upper-cased; 'A' & 'k' = 'A' (65): kept; '@' & 'k' = 64, below 'A':
    // 64 % 27 + 32 + 1 = '+'.
    EXPECT_EQ(BizGenerateZelPassword({"", "xa"}), "TAq7rLw_Zb3x-9mNp");
    EXPECT_EQ(BizGenerateZelPassword({"", "xA"}), "TAq7rLw_Zb3x-9mNp");
    EXPECT_EQ(BizGenerateZelPassword({"", "x@"}), "T+q7rLw_Zb3x-9mNp");
    // '`' & 'k' = 96: kept.
    EXPECT_EQ(BizGenerateZelPassword({"", "x`"}), "T`q7rLw_Zb3x-9mNp");
}

TEST(BizPassword, EveryInputGivesSeventeenPrintableCharacters) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"NV55UX8", "a4:3b:0c:11:22:33"},
        {"Test_SN", ""},
        {"", ""},
        {"NV55UX8A0123456789XYZ", "a4:3b:0c:11:22:33:44:55"},
        {"\x80\x90\xa0\xb0\xc0\xd0\xe0\xf0\xff", "\x80\x81\xfe\xff\x7f\x01\x20\x40\x60\x61"},
        {std::string(17, '\0'), std::string(17, '\0')},
        {"A4:3B", "A4:3B:0C:11:22:33"},
    };
    for (const auto& [serial, mac] : cases) {
        const std::string password = BizGenerateZelPassword({serial, mac, "ignored"});
        EXPECT_EQ(password, expectedPassword(serial, mac)) << serial;
        ASSERT_EQ(password.size(), 17u);
        for (const char c : password) {
            EXPECT_GE(static_cast<unsigned char>(c), 33) << serial;
        }
    }
}

using BizIdentity = BridgeTest;

TEST_F(BizIdentity, PasswordUsesTheSerialAndTheLowerCaseMac) {
    tv().set(kSerial, std::string("NV55UX8"));
    tv().set(kMac, std::string("A4:3B:0C:11:22:33"));
    EXPECT_EQ(BizGetEthernetMac(), "a4:3b:0c:11:22:33");
    EXPECT_EQ(BizGetZelPassword(), expectedPassword("NV55UX8", "a4:3b:0c:11:22:33"));

    tv().set(kSerial, std::string());
    tv().set(kMac, std::string());
    EXPECT_EQ(BizGetZelPassword(), expectedPassword("Test_SN", ""));
}

TEST_F(BizIdentity, ReadersReshapeWhatTheTvReports) {
    struct Case {
        const char* key;
        std::string stored;
        std::string (*reader)();
        std::string expected;
    };
    const std::vector<Case> cases = {
        {"marlo.sl2.str.nvfactory.production.type", "55X9_EU", BizGetZelModel, "55X9(EU)"},
        {"marlo.sl2.str.nvfactory.production.type", "A_B_C", BizGetZelModel, "A(B_C)"},
        {"marlo.sl2.str.nvfactory.production.type", "ABC", BizGetZelModel, "ABC"},
        {"marlo.sl2.str.nvfactory.production.type", "ABC", BizGetZelSubModel, "0004"},
        {"marlo.sl2.str.source.input.current", "AVS", BizGetSourceName, "AV"},
        {"marlo.sl2.str.source.input.current", "AV", BizGetSourceName, "AV"},
        {"marlo.sl2.str.source.input.current", "HDMI1", BizGetSourceName, "HDMI1"},
        {"marlo.sl2.str.source.input.current", "", BizGetSourceName, ""},
        {"marlo.sl2.str.app.setting.esn", "", BizGetEsn, "NULL"},
        {"marlo.sl2.str.nvfactory.fullbrand", "", BizGetBrand, "Norvane"},
        {"marlo.sl2.str.nvfactory.fullbrand", "Acme", BizGetBrand, "Acme"},
        {kSerial, "", BizGetSerialNumber, "Test_SN"},
        {kMac, "AA:BB:\xC3\x84", BizGetEthernetMac, "aa:bb:\xC3\x84"},
    };
    for (const Case& test : cases) {
        tv().set(test.key, test.stored);
        EXPECT_EQ(test.reader(), test.expected) << test.stored;
    }
    tv().set("marlo.sl2.i32.nvfactory.state.open", 1);
    EXPECT_EQ(BizGetFactoryMode(), "Factory Mode");
    tv().set("marlo.sl2.i32.nvfactory.state.open", 0);
    EXPECT_EQ(BizGetFactoryMode(), "User Mode");
}

TEST_F(BizIdentity, KeyNameFileIsReturnedByteForByte) {
    const char* file = "/certificate/keyname/ciplus.name";
    EXPECT_EQ(BizGetCiPlusKeyName(), "NULL") << "missing";
    writeTvFile(file, "");
    EXPECT_EQ(BizGetCiPlusKeyName(), "NULL") << "empty";
    writeTvFile(file, "ABC\n");
    EXPECT_EQ(BizGetCiPlusKeyName(), "ABC\n");
    writeTvFile(file, std::string("K\0\xff", 3));
    EXPECT_EQ(BizGetCiPlusKeyName(), std::string("K\0\xff", 3));
    std::remove(tv().resolvePath(file).c_str());
    writeTvFile(std::string(file) + "/inside", "a folder where the file should be");
    EXPECT_EQ(BizGetCiPlusKeyName(), "NULL") << "folder";
}

}  // namespace
}  // namespace norvane
