#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "zel/core/Base64Util.h"

namespace {

using Zel::Core::Base64Util;

struct FreeDeleter {
    void operator()(void* p) const { std::free(p); }
};

std::string encode(const std::string& data) {
    const std::unique_ptr<char, FreeDeleter> text(Base64Util::Encode(data));
    return text ? std::string(text.get()) : "<null>";
}

// What Decode gave back; ok is false when it returned null.
struct Decoded {
    bool ok = false;
    std::string data;
    bool nulTerminated = false;
};

Decoded decode(const std::string& text) {
    size_t length = 0;
    const std::unique_ptr<unsigned char, FreeDeleter> data(Base64Util::Decode(text, length));
    if (!data) {
        return {};
    }
    return {true, std::string(reinterpret_cast<const char*>(data.get()), length),
            data.get()[length] == '\0'};
}

std::string everyByteValue(size_t length) {
    std::string data;
    for (size_t i = 0; i < length; ++i) {
        data.push_back(static_cast<char>(i % 256));
    }
    return data;
}

TEST(HostBase64, EncodesStandardVectors) {
    EXPECT_EQ(encode(""), "");
    EXPECT_EQ(encode("f"), "Zg==");
    EXPECT_EQ(encode("fo"), "Zm8=");
    EXPECT_EQ(encode("foo"), "Zm9v");
    EXPECT_EQ(encode("foobar"), "Zm9vYmFy");
}

TEST(HostBase64, RoundTripsBinaryDataOfEveryPaddingLength) {
    for (size_t length : {0u, 1u, 2u, 3u, 255u, 256u, 257u, 1000u}) {
        SCOPED_TRACE(length);
        const std::string data = everyByteValue(length);
        const std::string text = encode(data);
        EXPECT_EQ(text.find('\n'), std::string::npos);

        const Decoded decoded = decode(text);
        ASSERT_TRUE(decoded.ok);
        EXPECT_EQ(decoded.data, data);
        EXPECT_TRUE(decoded.nulTerminated);
    }
}

TEST(HostBase64, DecodesTextWrappedIntoLines) {
    const std::string data = everyByteValue(3001);
    const std::string text = encode(data);
    for (const std::string breakText : {"\n", "\r\n", " \t"}) {
        std::string wrapped;
        for (size_t offset = 0; offset < text.size(); offset += 64) {
            wrapped += text.substr(offset, 64) + breakText;
        }
        const Decoded decoded = decode(wrapped);
        ASSERT_TRUE(decoded.ok);
        EXPECT_EQ(decoded.data, data);
    }
}

TEST(HostBase64, RejectsMalformedText) {
    for (const char* text : {"Zg=", "Zm9vY", "Z===", "====", "Zg=a", "=Zg=", "Zm9v!A==", "Zm-v"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(decode(text).ok);
    }
}

}  // namespace
