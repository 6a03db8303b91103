#include "adjust/TestGeometry.h"

namespace velmorak::testgeo {

namespace {
Beside strip(const QRect& console, const QRect& picture) {
    return {console.left() + picture.left() + picture.width() + kStripGap, kStripWidth, true};
}
} // namespace

SetLefts setLefts(int screenWidth, int width) {
    return {screenWidth - width, screenWidth - 2 * width, screenWidth - 3 * width};
}

Beside besideSharp(int screenWidth, const QRect& console, const QRect& picture, int testWidth) {
    if (testWidth + console.width() > screenWidth) return strip(console, picture);
    const int right = console.left() + console.width();
    const int left = right + testWidth > screenWidth ? console.left() - testWidth : right;
    return {left, -1, false};
}

Beside besideColor(int screenWidth, const QRect& console, const QRect& picture, int sharpWidth,
                   int colorWidth) {
    if (sharpWidth + console.width() + colorWidth > screenWidth) return strip(console, picture);
    const int right = console.left() + console.width();
    int left;
    if (right + sharpWidth > screenWidth)
        left = console.left() - colorWidth - sharpWidth;
    else if (right + sharpWidth + colorWidth <= screenWidth)
        left = right + sharpWidth - kOverlap;
    else
        left = console.left() - colorWidth;
    return {left, -1, false};
}

} // namespace velmorak::testgeo
