// The pictures the sources deliver: a channel's programme, a connected device's own screen, or
// black when there is no signal. They go through the picture settings (the canvas's tone).
#pragma once

#include "Canvas.h"
#include "ScreenView.h"

namespace tvsim {

// Covers the whole canvas.
void drawSourcePicture(Canvas& canvas, const SourceView& source);

// Eight colour bars (white, yellow, cyan, green, magenta, red, blue, black) in the upper two
// thirds, a grey ramp from black to white below, and the caption "NORVANE TV" in the middle.
void drawTestCard(Canvas& canvas);

}  // namespace tvsim
