// The TV's on-screen displays, drawn over the source's picture (the picture settings do not
// touch them): the no-signal box, banners, the volume bar, the menu, the remote-support dialog,
// notices and the remote-support mark.
#pragma once

#include <string>
#include <vector>

#include "Canvas.h"
#include "ScreenView.h"

namespace tvsim {

void drawOnScreenDisplays(Canvas& canvas, const ScreenView& view);

// `text` broken at blanks into lines no wider than `width` in `font` (a word wider than that
// stands on a line of its own).
std::vector<std::string> wrapText(const std::string& text, const Font& font, int32_t width);

}  // namespace tvsim
