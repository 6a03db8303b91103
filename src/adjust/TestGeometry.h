#pragma once

#include <QRect>

namespace velmorak {

// Where the test picture windows go, in pixels on a screen of the given size. Offsets and the
// strip width were designed in twips (15 to the pixel).
namespace testgeo {

// Twips to the nearest pixel.
constexpr int fromTwips(int twips) {
    return (twips + 7) / 15;
}

// A test window squeezed into a strip over the adjustment window when it does not fit beside it.
inline constexpr int kStripGap = fromTwips(350); // past the right edge of the clicked picture
inline constexpr int kStripWidth = fromTwips(500);
// The colour window overlaps the sharpness window by this much when both fit on the right.
inline constexpr int kOverlap = fromTwips(100);

// The set of three, side by side at the right edge, each `width` wide.
struct SetLefts {
    int test, color, gray;
};
SetLefts setLefts(int screenWidth, int width);

// A window placed beside the adjustment window; width < 0 keeps the window's own width.
struct Beside {
    int left;
    int width;
    bool strip;
};

// frmTest beside the adjustment window `console`; `picture` is the clicked picture's rectangle
// inside that window.
Beside besideSharp(int screenWidth, const QRect& console, const QRect& picture, int testWidth);
// The colour or grey window beside the adjustment window, leaving room for frmTest (`sharpWidth`
// wide, whether open or not).
Beside besideColor(int screenWidth, const QRect& console, const QRect& picture, int sharpWidth,
                   int colorWidth);

} // namespace testgeo
} // namespace velmorak
