// The settings the TV's own software works with, and the values it gives some of them.
#pragma once

#include <cstdint>

namespace tvsim {
namespace keys {

// Every picture setting's key begins so.
constexpr char kPictureSettings[] = "marlo.sl2.i32.video.";

constexpr char kVolume[] = "marlo.sl2.i32.sound.main.volume";
constexpr char kMute[] = "marlo.sl2.i32.sound.main.mute";
constexpr char kSoundMode[] = "marlo.sl2.i32.sound.enum.adjust";
constexpr char kPictureMode[] = "marlo.sl2.i32.video.enum.picture.adjustment";
constexpr char kBrightness[] = "marlo.sl2.i32.video.brightness";
constexpr char kContrast[] = "marlo.sl2.i32.video.contrast";
constexpr char kColourSaturation[] = "marlo.sl2.i32.video.colour.intensity";
constexpr char kColourTemperature[] = "marlo.sl2.i32.video.enum.colour.temperature";
constexpr char kVideoFormat[] = "marlo.sl2.str.video.diagnosis.info";
constexpr char kCurrentSource[] = "marlo.sl2.str.source.input.current";
// Pairs of a source's name and the name the viewer gave it.
constexpr char kSourceNames[] = "marlo.sl2.vstr.source.input.name";
// "<input>-<device name>" for each input with a CEC device on it.
constexpr char kCecDevices[] = "marlo.sl2.cec.input.names";
// The number of the channel the TV source plays.
constexpr char kCurrentChannel[] = "marlo.sl2.i32.tvservice.current.channel";
constexpr char kSupportEnable[] = "marlo.sl2.i32.app.setting.zel.enable";
constexpr char kSessionCode[] = "marlo.sl2.str.app.setting.zel.session.code";
// What the support agent's plug-in tells the TV's application (session and source events).
constexpr char kAppNotify[] = "marlo.sl2.i32.app.setting.zel.notify";

}  // namespace keys

constexpr int32_t kSupportOn = 0xA5A5;
constexpr int32_t kSupportOff = 0x5A5A;
constexpr char kAskForSessionCode[] = "session0";
constexpr char kNoSessionCode[] = "sessionDefault";
constexpr int32_t kEngineerConnected = 1;
constexpr int32_t kSessionEnded = 2;
constexpr char kTvSource[] = "TV";

}  // namespace tvsim
