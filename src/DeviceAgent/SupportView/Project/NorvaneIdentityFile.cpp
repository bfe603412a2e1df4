#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/NorvaneInterfaces"

#include "DeviceAgent/SupportView/Project/NorvaneIdentityFile.h"

#include <fcntl.h>
#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rsa.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <type_traits>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"
#include "common/Seams.h"
#include "common/WholeFile.h"
#include "zel/PluginApi.h"
#include "zel/core/Base64Util.h"
#include "zel/json/ZelJson.h"

// The agent resolves the rewrite by name and calls it through this type.
static_assert(std::is_same_v<decltype(&NvCreateNewZelIdJson), ZelPlugin::CreateIdJsonFn>);

namespace norvane {
namespace {

constexpr const char* kFunction = "NvCreateNewZelIdJson";
constexpr const char* kTemporaryKeyFile = "/var/run/temporary/privatekey.pem";
constexpr int32_t kSeverityDetail = 7;

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Freed = std::unique_ptr<T, FreeDeleter>;

struct BioDeleter {
    void operator()(BIO* bio) const { BIO_free_all(bio); }
};
struct RsaDeleter {
    void operator()(RSA* rsa) const { RSA_free(rsa); }
};

struct OldIdentity {
    std::string key;
    std::string cert;
    std::string trust;
    std::string password;
    std::string value1;
    std::string value2;
};

std::string stringMember(const ZelJson::Value& root, const char* name) {
    if (!root.isObject()) {
        return std::string();
    }
    const ZelJson::Value& member = root[name];
    return member.isString() ? member.asString() : std::string();
}

// A file that cannot be read or parsed gives empty members.
OldIdentity readOldIdentity(const std::string& input) {
    OldIdentity identity;
    const Freed<char> text(readWholeFile(input.c_str()));
    ZelJson::Value root;
    ZelJson::Reader reader;
    if (text != nullptr && reader.parse(text.get(), root, false)) {
        identity.key = stringMember(root, "key");
        identity.cert = stringMember(root, "cert");
        identity.trust = stringMember(root, "trust");
        identity.password = stringMember(root, "password");
        identity.value1 = stringMember(root, "value1");
        identity.value2 = stringMember(root, "value2");
    }
    return identity;
}

// Owner-only from the start, also when a stale file of the same name is reused.
int createOwnerOnlyFile(const std::string& path) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file >= 0 && fchmod(file, 0600) != 0) {
        close(file);
        return -1;
    }
    return file;
}

// Writes the key protected with the TV's access password to `keyFile`. A key that cannot be
// written completely is removed, so that it is never taken for the new key.
void writeProtectedKey(RSA& rsa, const std::string& keyFile) {
    const std::string password = NvGetZelPassword();
    const int file = createOwnerOnlyFile(keyFile);
    if (file < 0) {
        return;
    }
    const std::unique_ptr<BIO, BioDeleter> bio(BIO_new_fd(file, BIO_CLOSE));
    if (bio == nullptr) {
        close(file);
        unlink(keyFile.c_str());
        return;
    }
    NV_HOST_LOG_AS(kFunction, kSeverityDetail, "PEM_write_bio_RSAPrivateKey");
    auto* passPhrase = reinterpret_cast<unsigned char*>(const_cast<char*>(password.data()));
    if (PEM_write_bio_RSAPrivateKey(bio.get(), &rsa, EVP_aes_256_cbc(), passPhrase,
                                    static_cast<int>(password.size()), nullptr, nullptr) != 1) {
        ERR_clear_error();
        unlink(keyFile.c_str());
    }
}

// Unwraps the old key and stores it re-protected in `keyFile`. False when the key text cannot
// be wrapped for reading. A key that cannot be unwrapped is only logged: whatever key file is
// left from before then stands in for it.
bool storeRewrappedKey(const OldIdentity& identity, const std::string& keyFile) {
    size_t length = 0;
    const Freed<unsigned char> pem(Zel::Core::Base64Util::Decode(identity.key, length));
    const std::unique_ptr<BIO, BioDeleter> memory(pem != nullptr ? BIO_new_mem_buf(pem.get(), -1)
                                                                 : nullptr);
    if (memory == nullptr) {
        NV_HOST_LOG_AS(kFunction, kSeverityError, "bio is NULL");
        return false;
    }
    const std::unique_ptr<RSA, RsaDeleter> rsa(PEM_read_bio_RSAPrivateKey(
        memory.get(), nullptr, nullptr, const_cast<char*>(identity.password.c_str())));
    if (rsa == nullptr) {
        ERR_clear_error();
        NV_HOST_LOG_AS(kFunction, kSeverityError, "rsa is NULL.");
        return true;
    }
    writeProtectedKey(*rsa, keyFile);
    return true;
}

// The key file's PEM text, base64-encoded; the key file is removed in every case.
Freed<char> takeEncodedKey(const std::string& keyFile) {
    const Freed<char> pem(readWholeFile(keyFile.c_str()));
    std::remove(keyFile.c_str());
    if (pem == nullptr || *pem == '\0') {
        NV_HOST_LOG_AS(kFunction, kSeverityError, "pcNewKey is NULL.");
        return nullptr;
    }
    Freed<char> encoded(Zel::Core::Base64Util::Encode(pem.get()));
    if (encoded == nullptr) {
        NV_HOST_LOG_AS(kFunction, kSeverityError, "pcEncodeNewKey is NULL.");
    }
    return encoded;
}

std::string identityText(const char* key, const OldIdentity& old, const char* value1,
                         const char* value2) {
    // Values are written as they are, without JSON escaping, as the agent reads them.
    return std::string("{\n") + "\"key\":\"" + key + "\",\n" + "\"cert\":\"" + old.cert + "\",\n" +
           "\"trust\":\"" + old.trust + "\",\n" + "\"value1\":\"" + value1 + "\",\n" +
           "\"value2\":\"" + value2 + "\"\n" + "}\n";
}

bool writeAll(int file, const std::string& text) {
    size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(file, text.data() + written, text.size() - written);
        if (count < 0) {
            return false;
        }
        written += static_cast<size_t>(count);
    }
    return true;
}

// Writes beside `output` and renames over it, so `output` is either the old file or the whole
// new one. An existing output keeps its permissions.
bool replaceFile(const std::string& output, const std::string& text) {
    const std::string temporary = output + ".tmp";
    unlink(temporary.c_str());
    const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) {
        NV_HOST_LOG_AS(kFunction, kSeverityError, "%s, fp is NULL.", output.c_str());
        return false;
    }
    struct stat existing {};
    if (stat(output.c_str(), &existing) == 0) {
        fchmod(file, existing.st_mode & 07777);
    }
    const bool written = writeAll(file, text) && fsync(file) == 0;
    if (close(file) != 0 || !written || rename(temporary.c_str(), output.c_str()) != 0) {
        unlink(temporary.c_str());
        NV_HOST_LOG_AS(kFunction, kSeverityError, "%s, write failed.", output.c_str());
        return false;
    }
    return true;
}

}  // namespace
}  // namespace norvane

int32_t NvCreateNewZelIdJson(const std::string& input, const std::string& output,
                             const char* value1, const char* value2) {
    using namespace norvane;
    if (access(input.c_str(), F_OK) != 0) {
        NV_HOST_LOG(kSeverityError, "Can not find the original id.json file.");
        return -1;
    }
    OldIdentity identity = readOldIdentity(input);
    if (identity.key.empty()) {
        NV_HOST_LOG(kSeverityError, "strOldkey is empty.");
        return -1;
    }
    if (identity.password.empty()) {
        identity.password = NvGenerateZelPassword({identity.value1, identity.value2});
    }
    const std::string keyFile = platformPath(kTemporaryKeyFile);
    if (!storeRewrappedKey(identity, keyFile)) {
        return -1;
    }
    if (access(keyFile.c_str(), F_OK) != 0) {
        NV_HOST_LOG(kSeverityError, "pri_keyfile: %s not exist.", keyFile.c_str());
        return -1;
    }
    const Freed<char> key = takeEncodedKey(keyFile);
    if (key == nullptr) {
        return -1;
    }
    const std::string text = identityText(key.get(), identity, value1 != nullptr ? value1 : "",
                                          value2 != nullptr ? value2 : "");
    return replaceFile(output, text) ? 0 : -1;
}
