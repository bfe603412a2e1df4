#!/bin/sh
# ra_getlog: gathers the TV's logs and leaves them in /OAD/ as chunks <prefix>aa, <prefix>ab, ...
# Usage: ra_getlog <chunk size> <prefix>      e.g. ra_getlog 2560k zellog
# TVSIM_LOG_BYTES sets the size of the gathered log (default about 400 KB).
set -eu

if [ "$#" -ne 2 ]; then
    echo "usage: ra_getlog <chunk size> <prefix>" >&2
    exit 2
fi
chunk_size=$1
prefix=$2

# Installed as <root>/usr/local/bin/ra_getlog: everything it touches lies below that root.
root=$(cd "$(dirname "$0")/../../.." && pwd)
mkdir -p "$root/OAD"

awk -v bytes="${TVSIM_LOG_BYTES:-400000}" '
function pick(list,    n, items) {
    n = split(list, items, "|")
    return items[int(rand() * n) + 1]
}
function stamp(t,    s, ms) {
    s = int(t)
    ms = int((t - s) * 1000)
    return sprintf("01-%02d %02d:%02d:%02d.%03d", 1 + int(s / 86400) % 28, int(s / 3600) % 24,
                   int(s / 60) % 60, s % 60, ms)
}
function message(tag) {
    if (tag == "tvservice") return sprintf(pick("source switched to HDMI%d|picture mode %d applied|channel %d locked|epg updated, %d events"), int(rand() * 4) + 1)
    if (tag == "hdmi_rx") return sprintf(pick("HDMI%d hot plug detected|HDMI%d TMDS clock stable|HDMI%d HDCP 2.2 authenticated|HDMI%d AVI infoframe changed"), int(rand() * 4) + 1)
    if (tag == "cec") return sprintf(pick("<Report Power Status> from %d: on|<Give Audio Status> to %d|<Active Source> from %d"), int(rand() * 15))
    if (tag == "audio") return sprintf(pick("volume %d|output path speaker, 48000 Hz|ARC stream format %d (Dolby Digital)|lipsync delay %d ms"), int(rand() * 100))
    if (tag == "video") return sprintf(pick("timing 1920x1080p@%d, YUV444|hdr mode %d|memc level %d|backlight %d"), int(rand() * 100))
    if (tag == "tuner") return sprintf(pick("frequency 474000 kHz: quality %d|DVB-T2 PLP %d lock|signal lost for %d ms"), int(rand() * 100))
    if (tag == "netd") return sprintf(pick("eth0 link up, 100 Mbps full duplex|dhcp lease renewed: 192.168.1.%d|dns query took %d ms|ntp offset %d ms"), int(rand() * 250))
    if (tag == "bluetooth") return sprintf(pick("scan finished, %d devices|remote battery %d%%|a2dp sink rssi -%d dBm"), int(rand() * 100))
    if (tag == "power") return sprintf(pick("thermal zone0 %d mC|standby timer %d min|panel on after %d ms"), 40000 + int(rand() * 20000))
    return sprintf(pick("usb 1-1: new high-speed USB device number %d|mmcblk0: cache flush %d ms|lowmemorykiller: free %d kB"), int(rand() * 5000))
}
BEGIN {
    srand(20240611)
    split("tvservice hdmi_rx cec audio video tuner netd bluetooth power kernel", tags, " ")
    split("I I I D D W E", levels, " ")
    t = 3600 * 8 + 12.345
    written = 0
    while (written < bytes) {
        t += rand() * 0.9
        tag = tags[int(rand() * 10) + 1]
        pid = 300 + int(rand() * 2200)
        line = sprintf("%s %5d %5d %s %-9s: %s\n", stamp(t), pid, pid + int(rand() * 40),
                       levels[int(rand() * 7) + 1], tag, message(tag))
        if (written + length(line) > bytes) line = substr(line, 1, bytes - written)
        printf "%s", line
        written += length(line)
    }
}' | split -b "$chunk_size" - "$root/OAD/$prefix"
