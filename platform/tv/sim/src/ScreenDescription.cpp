#include "ScreenDescription.h"

namespace tvsim {
namespace {

Json::Value texts(const std::vector<std::string>& lines) {
    Json::Value list(Json::arrayValue);
    for (const std::string& line : lines) {
        list.append(line);
    }
    return list;
}

Json::Value describeSource(const SourceView& source) {
    Json::Value described(Json::objectValue);
    described["name"] = source.source;
    switch (source.kind) {
        case SourceView::Kind::Channel:
            described["shows"] = "channel";
            described["channel"] = source.channel.number;
            described["channelName"] = source.channel.name;
            described["programme"] = source.channel.programme;
            break;
        case SourceView::Kind::Device:
            described["shows"] = "device";
            described["device"] = source.device;
            break;
        case SourceView::Kind::NoSignal:
            described["shows"] = "no signal";
            described["message"] = source.message;
            break;
    }
    return described;
}

Json::Value banner(const char* kind, const std::vector<std::string>& lines) {
    Json::Value described(Json::objectValue);
    described["kind"] = kind;
    described["lines"] = texts(lines);
    return described;
}

Json::Value describeBanner(const ChannelBanner& shown) {
    const Channel& channel = shown.channel;
    return banner("channel", {std::to_string(channel.number), channel.name, channel.programme});
}

Json::Value describeBanner(const SourceBanner& shown) {
    std::vector<std::string> lines = {shown.title};
    for (size_t i = 0; i < shown.sources.size(); ++i) {
        lines.push_back((i == shown.current ? "> " : "  ") + shown.sources[i].first + " " +
                        shown.sources[i].second);
    }
    return banner("source", lines);
}

Json::Value describeBanner(const InfoBanner& shown) {
    std::vector<std::string> lines = {shown.title, shown.subtitle};
    lines.insert(lines.end(), shown.details.begin(), shown.details.end());
    return banner("info", lines);
}

Json::Value describeBanner(const SettingBanner& shown) {
    return banner("setting", {shown.name, shown.value});
}

Json::Value describeMenu(const MenuView& menu) {
    Json::Value described(Json::objectValue);
    described["title"] = menu.title;
    described["rows"] = Json::Value(Json::arrayValue);
    for (const MenuRow& row : menu.rows) {
        Json::Value entry(Json::objectValue);
        entry["label"] = row.label;
        entry["value"] = row.value;
        entry["enabled"] = row.enabled;
        described["rows"].append(entry);
    }
    described["highlighted"] = static_cast<Json::UInt64>(menu.highlighted);
    return described;
}

Json::Value describeDialog(const DialogView& dialog) {
    Json::Value described(Json::objectValue);
    described["title"] = dialog.title;
    std::vector<std::string> lines = dialog.paragraphs;
    if (!dialog.footnote.empty()) {
        lines.push_back(dialog.footnote);
    }
    described["text"] = texts(lines);
    if (!dialog.code.empty()) {
        described["code"] = dialog.code;
    }
    return described;
}

}  // namespace

Json::Value describeScreen(const ScreenView& view) {
    Json::Value described(Json::objectValue);
    described["standby"] = view.standby;
    if (view.standby) {
        return described;
    }
    described["source"] = describeSource(view.source);
    Json::Value& picture = described["picture"];
    picture["mode"] = view.picture.mode;
    picture["brightness"] = view.picture.brightness;
    picture["contrast"] = view.picture.contrast;
    picture["saturation"] = view.picture.saturation;
    picture["temperature"] = view.picture.temperature;
    if (view.banner) {
        described["banner"] =
            std::visit([](const auto& shown) { return describeBanner(shown); }, *view.banner);
    }
    if (view.volume) {
        described["volume"]["level"] = view.volume->level;
        described["volume"]["muted"] = view.volume->muted;
    }
    if (view.menu) {
        described["menu"] = describeMenu(*view.menu);
    }
    if (view.dialog) {
        described["dialog"] = describeDialog(*view.dialog);
    }
    if (view.notice) {
        described["notice"] = *view.notice;
    }
    if (view.badge) {
        described["badge"] = *view.badge;
    }
    return described;
}

}  // namespace tvsim
