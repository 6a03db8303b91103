// Draws the two bar pictures of the test windows: colour bars and a grey ramp, as bitmaps.
//   velmorak-barsgen <folder>
#include "adjust/TestWindows.h"

#include <QColor>
#include <QDir>
#include <QImage>

#include <cstdio>
#include <vector>

namespace {

using velmorak::FrmTestBars;

constexpr int kHeight = 256;

bool draw(const std::vector<QColor>& bars, const QString& path) {
    QImage img(FrmTestBars::kPictureWidth, kHeight, QImage::Format_RGB888);
    const int n = int(bars.size());
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            img.setPixelColor(x, y, bars[size_t(x * n / img.width())]);
    return img.save(path, "BMP");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: velmorak-barsgen <folder>\n", stderr);
        return 2;
    }
    const QDir dir(QString::fromLocal8Bit(argv[1]));
    // White, the secondaries and primaries by falling brightness, black.
    const std::vector<QColor> colour{Qt::white,   Qt::yellow, Qt::cyan, Qt::green,
                                     Qt::magenta, Qt::red,    Qt::blue, Qt::black};
    // Sixteen steps from white to black.
    std::vector<QColor> grey;
    for (int i = 0; i < 16; ++i)
        grey.push_back(QColor(255 - i * 17, 255 - i * 17, 255 - i * 17));
    const QString c = dir.filePath(QString::fromLatin1(FrmTestBars::kColorFile));
    const QString g = dir.filePath(QString::fromLatin1(FrmTestBars::kGrayFile));
    if (!draw(colour, c) || !draw(grey, g)) {
        std::fprintf(stderr, "velmorak-barsgen: cannot write into %s\n", argv[1]);
        return 1;
    }
    return 0;
}
