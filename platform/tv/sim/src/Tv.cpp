// The control API: a thin front over the one Service of the process.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "EmbeddedText.h"
#include "JsonText.h"
#include "Profile.h"
#include "ScreenDescription.h"
#include "Service.h"

namespace tvsim {

struct Tv::State {
    Service& service;
};

Tv& Tv::instance() {
    // Never destroyed, like the service behind it.
    static Tv* const tv = new Tv();
    return *tv;
}

Tv::Tv() : state_(new State{Service::instance()}) {}

Tv::~Tv() {
    delete state_;
}

void Tv::reset() {
    state_->service.reset();
}

// The profile is checked completely before the TV is reset, so a bad one changes nothing.
void Tv::loadProfileText(const std::string& text, const std::string& sourceName) {
    const Profile profile = parseProfile(text, sourceName);
    state_->service.loadProfile(profile, sourceName);
}

void Tv::loadProfileFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (!std::filesystem::is_regular_file(path) || !file || !(text << file.rdbuf())) {
        throw ProfileError(path + ": cannot read the profile");
    }
    loadProfileText(text.str(), path);
}

void Tv::loadDefaultProfile() {
    loadProfileText(defaultProfileText(), "default.json");
}

const std::string& Tv::defaultProfileText() {
    static const std::string* const text = new std::string(embedded::defaultProfile());
    return *text;
}

bool Tv::set(const std::string& key, const Value& value) {
    return state_->service.store().set(key, value);
}

Value Tv::get(const std::string& key) const {
    return state_->service.store().get(key);
}

void Tv::setProxyStartFails(bool fails) {
    state_->service.faults().setProxyStartFails(fails);
}

void Tv::setInterfaceReferenceFails(bool fails) {
    state_->service.faults().setInterfaceReferenceFails(fails);
}

void Tv::setRootInterfaceNull(bool null) {
    state_->service.faults().setRootInterfaceNull(null);
}

void Tv::setConnectStatus(const std::string& key, int32_t status) {
    state_->service.faults().setConnectStatus(key, status);
}

void Tv::setWriteStatus(const std::string& key, int32_t status) {
    state_->service.faults().setWriteStatus(key, status);
}

void Tv::setScreenSize(int32_t width, int32_t height) {
    state_->service.screen().setSize(width, height);
}

int32_t Tv::largestScreenSide() {
    return kLargestScreenSide;
}

int32_t Tv::screenWidth() const {
    return state_->service.screen().width();
}

int32_t Tv::screenHeight() const {
    return state_->service.screen().height();
}

void Tv::setCaptureEnabled(bool enabled) {
    state_->service.screen().setCaptureEnabled(enabled);
}

std::string Tv::describeScreen() const {
    return simjson::compact(tvsim::describeScreen(state_->service.software().view()));
}

void Tv::pressKey(const std::string& key) {
    state_->service.software().pressKey(key);
}

void Tv::setActionHandler(const std::string& key, ActionHandler handler) {
    state_->service.setActionHandler(key, std::move(handler));
}

std::vector<JournalEntry> Tv::takeJournal(uint64_t* dropped) {
    return state_->service.journal().take(dropped);
}

void Tv::waitUntilDelivered() {
    state_->service.store().waitUntilDelivered();
}

int32_t Tv::cspDebugInitCalls() const {
    return state_->service.debugInitCalls();
}

int32_t Tv::proxyStarts() const {
    return state_->service.proxyStarts();
}

int64_t Tv::connectCalls() const {
    return state_->service.connectCalls();
}

int64_t Tv::openHandles() const {
    return state_->service.openHandles();
}

size_t Tv::observerCount(const std::string& key) const {
    return state_->service.store().observerCount(key);
}

void Tv::setFilesystemRoot(const std::string& folder) {
    state_->service.filesystem().setRoot(folder);
}

const std::string& Tv::filesystemRoot() const {
    return state_->service.filesystem().root();
}

bool Tv::usableAsRoot(const std::string& folder) {
    return Filesystem::usableAsRoot(folder);
}

void Tv::requireUsableRoot(const std::string& folder) {
    Filesystem::requireUsableRoot(folder);
}

std::string Tv::resolvePath(const std::string& tvPath) const {
    return state_->service.filesystem().resolve(tvPath);
}

std::string Tv::resolvePathInside(const std::string& tvPath) const {
    return state_->service.filesystem().resolveInside(tvPath);
}

void Tv::setTimeScale(double scale) {
    state_->service.clock().setScale(scale);
}

double Tv::timeScale() const {
    return state_->service.clock().scale();
}

timespec Tv::monotonicNow() const {
    return state_->service.clock().now();
}

timespec Tv::realTimeOf(const timespec& simulated) const {
    return state_->service.clock().realTimeOf(simulated);
}

void Tv::sleepFor(double seconds) const {
    state_->service.clock().sleepFor(seconds);
}

int Tv::timedWait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                  const timespec& deadline) const {
    return state_->service.clock().timedWait(condition, mutex, deadline);
}

timespec Tv::holdTime() {
    return state_->service.clock().hold();
}

void Tv::advanceTimeTo(const timespec& instant) {
    state_->service.clock().advanceTo(instant);
}

void Tv::releaseTime() {
    state_->service.clock().release();
}

std::vector<timespec> Tv::pendingWakeups() const {
    return state_->service.clock().pendingWakeups();
}

}  // namespace tvsim
