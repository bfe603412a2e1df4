// Control side of the simulated TV: what a test or agentsim sets up, scripts and observes. The
// plug-in never includes this header; it reaches the simulated TV only through the middleware
// interfaces in platform/tv/include.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "marlo/tvapi/RootInterface.h"

namespace tvsim {

using marlo::lm::interfaces::tvapi::ParameterList;
using marlo::lm::interfaces::tvapi::ParameterRecord;

enum class KeyType { Int32, String, StringList, Int32List, Action, Invalid };

// The type a key names: "marlo.sl2.<i32|str|vstr|vint32|action>.<dotted path>", plus the two
// irregular keys "marlo.sl2.system.action.send.key" (action) and "marlo.sl2.cec.input.names"
// (string list). Anything else is Invalid.
KeyType keyType(const std::string& key);
const char* keyTypeName(KeyType type);

// A setting's value. A String key may also hold a StringList (some diagnosis keys are lists).
using Value = std::variant<int32_t, std::string, std::vector<std::string>, std::vector<int32_t>>;

// What a never-set key of this type reads as (0, "", [] or [] ).
Value defaultValue(KeyType type);
// Whether `value` may be stored under a key of `type`.
bool fits(KeyType type, const Value& value);

struct JournalEntry {
    enum class Kind { Write, Action };
    Kind kind = Kind::Write;
    std::string key;
    Value value;              // Write: the value written
    ParameterList arguments;  // Action: the argument list
    int32_t status = 0;       // what the handle returned
};

// Thrown by the profile loaders; what() is one line naming the file, the place and the problem.
class ProfileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Thrown when a path named to the TV would leave its filesystem root; what() names the path.
class PathError : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

// The journal keeps this many of the newest entries; older ones are dropped and counted.
constexpr size_t kJournalCapacity = 10000;
// Simulated time runs from 1/100 to 10000 times as fast as real time: slower would make the
// plug-in's waits endless, faster would run its 64-bit nanosecond clock out within days.
constexpr double kSlowestTimeScale = 0.01;
constexpr double kFastestTimeScale = 10000;

// Reacts to an action: fills the reply and returns the action's status.
using ActionHandler = std::function<int32_t(const ParameterList& arguments, ParameterList& reply)>;

// The one simulated TV of the process.
class Tv {
public:
    static Tv& instance();

    // Forget everything: settings, faults, journal, observers, action handlers, counters; the
    // screen goes back to 1920x1080 with capture on, and the TV's own software to one just
    // switched on (no channel list, English wording, nothing on screen but the picture); the
    // filesystem root and time scale stay.
    void reset();

    // --- Initial state ---
    // Profile document (JSON):
    // {
    //   "description": "text",
    //   "settings": { "<key>": 42 | "text" | ["a", "b"] | [1, 2], ... },
    //   "files":    { "/absolute/path": "text" | {"base64": "..."}, ... },
    //   "screen":   { "width": 1920, "height": 1080 },
    //   "channels": [ { "number": 1, "name": "text", "programme": "text",
    //                   "picture": "studio" | "landscape" | "pitch" | "city" | "bars" }, ... ],
    //   "texts":    { "noSignal": "text", ... }
    // }
    // Settings are checked against their key's type; among them the initial source
    // ("marlo.sl2.str.source.input.current") and channel ("marlo.sl2.i32.tvservice.current.
    // channel", a number of the channel list). Files are written below the filesystem root (not
    // at all while no root is set). "texts" gives on-screen texts in the TV's language, by name
    // (English where none is given). Throws ProfileError.
    void loadProfileText(const std::string& text, const std::string& sourceName);
    void loadProfileFile(const std::string& path);
    // A plausible TV: identity, picture and sound state, sources, tuner, network, key files,
    // model configuration.
    void loadDefaultProfile();
    static const std::string& defaultProfileText();

    // --- Settings, as the TV itself changes them (observers fire, nothing is journaled) ---
    // Returns false when the key is Invalid or the value does not fit its type.
    bool set(const std::string& key, const Value& value);
    Value get(const std::string& key) const;  // defaultValue of the key's type when never set

    // --- Faults ---
    void setProxyStartFails(bool fails);
    void setInterfaceReferenceFails(bool fails);
    void setRootInterfaceNull(bool null);
    void setConnectStatus(const std::string& key, int32_t status);  // 0 removes the fault
    void setWriteStatus(const std::string& key, int32_t status);    // 0 removes the fault

    // --- Screen ---
    // Both sides lie in 1..largestScreenSide(); throws std::invalid_argument otherwise.
    void setScreenSize(int32_t width, int32_t height);
    static int32_t largestScreenSide();
    int32_t screenWidth() const;
    int32_t screenHeight() const;
    // With capture off the capture action writes nothing.
    void setCaptureEnabled(bool enabled);
    // What the screen shows now, in words: one line of JSON with the source and what it shows,
    // the picture settings, and each on-screen display that is up ("banner", "volume", "menu",
    // "dialog", "notice", "badge").
    std::string describeScreen() const;

    // --- The viewer ---
    // A key pressed on the TV's own remote control, by the TV's key name ("KEY_MENU",
    // "KEY_CURSOR_DOWN", "KEY_OK", ...: the names the key-injection action takes). It acts as a
    // key sent by the plug-in does, but nothing is journaled.
    void pressKey(const std::string& key);

    // --- Reactions ---
    // Replaces the TV's own reaction to an action key (the built-in ones: screen capture,
    // picture/sound resets, factory reset, send key, data module).
    void setActionHandler(const std::string& key, ActionHandler handler);

    // --- Observation ---
    // Every write and action the plug-in made since the previous take, in order: the newest
    // kJournalCapacity of them; `dropped` (when given) receives how many older ones were not kept.
    std::vector<JournalEntry> takeJournal(uint64_t* dropped = nullptr);
    // Blocks until every change made so far has been delivered to the observers, together with
    // the changes those observers make in turn. From inside an observer it returns at once (the
    // running observer's own changes can only be delivered after it returns).
    void waitUntilDelivered();
    int32_t cspDebugInitCalls() const;
    int32_t proxyStarts() const;
    int64_t connectCalls() const;  // every RootInterface::connect
    int64_t openHandles() const;   // connected handles not yet disconnected (observers too)
    size_t observerCount(const std::string& key) const;

    // --- Filesystem root and time ---
    // Folder that stands for "/" of the TV; fixed paths of the plug-in resolve inside it. The
    // TV's shell tools take the folder's name as it stands, so a name they cannot take is refused
    // with std::invalid_argument (see usableAsRoot).
    void setFilesystemRoot(const std::string& folder);
    const std::string& filesystemRoot() const;
    // Whether a shell takes the folder's name as one plain word: letters, digits, bytes beyond
    // ASCII and / . _ - + , : @ % = only (no blank, quote, ';', '$', backquote, backslash, line
    // break or other character the shell gives a meaning).
    static bool usableAsRoot(const std::string& folder);
    // Throws std::invalid_argument, naming the folder and what it may hold, unless usableAsRoot.
    static void requireUsableRoot(const std::string& folder);
    // A TV path in the host's filesystem, unchecked: for the plug-in's own fixed paths.
    std::string resolvePath(const std::string& tvPath) const;
    // A TV path that someone outside the TV names (a script, a profile, an action's arguments),
    // in the host's filesystem. Throws PathError when it would leave the root, through ".." or
    // through a symbolic link; with no root set it is the path itself.
    std::string resolvePathInside(const std::string& tvPath) const;
    // Simulated time runs `scale` times faster than real time (default 1); a scale outside
    // kSlowestTimeScale..kFastestTimeScale is refused with std::invalid_argument.
    // Changing the scale keeps simulated time continuous.
    void setTimeScale(double scale);
    double timeScale() const;
    // The simulated monotonic clock (CLOCK_MONOTONIC scaled from the moment of the last
    // setTimeScale), unless held (below).
    timespec monotonicNow() const;
    // The real CLOCK_MONOTONIC time at which the simulated clock reaches `simulated`; an hour
    // ahead while time is held short of it.
    timespec realTimeOf(const timespec& simulated) const;
    // Lets `seconds` of simulated time pass, following changes of the scale and the hold.
    void sleepFor(double seconds) const;
    // The plug-in's timed waits: pthread_cond_timedwait on a condition variable that uses
    // CLOCK_MONOTONIC, with `deadline` on the simulated clock. ETIMEDOUT once the simulated
    // deadline has passed; a change of the scale or hold wakes it as a spurious wake-up (0).
    int timedWait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                  const timespec& deadline) const;
    // Held time, so that a test sees what happens at an exact instant: time runs on only up to
    // the held instant and stays there; sleeps and waits for later instants go on waiting.
    // Stops time where it is and returns that instant.
    timespec holdTime();
    // With time held: lets it run on at the scale up to `instant`, holds it there and returns
    // once it shows `instant`. Throws std::logic_error when time is not held and
    // std::invalid_argument when `instant` lies in the past.
    void advanceTimeTo(const timespec& instant);
    // Time runs on from where it was held.
    void releaseTime();
    // The simulated instants that sleeps and timed waits are waiting for, earliest first.
    std::vector<timespec> pendingWakeups() const;

private:
    Tv();
    ~Tv();
    struct State;
    State* state_;
};

}  // namespace tvsim
