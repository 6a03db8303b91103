// Draws the four arrow pictures of the stepper into a folder: left and right, released and
// pressed, 32 x 32 icons.
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>

namespace {

QImage arrow(bool right, bool pressed) {
    constexpr int kSize = 32;
    QImage img(kSize, kSize, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    // A raised key when released, a sunken one when pressed.
    p.setPen(QPen(QColor(0x60, 0x60, 0x60), 1));
    p.setBrush(pressed ? QColor(0x9A, 0xA8, 0xB8) : QColor(0xE4, 0xE8, 0xEE));
    p.drawRoundedRect(QRectF(1.5, 1.5, kSize - 3, kSize - 3), 5, 5);
    const double shift = pressed ? 1.0 : 0.0;
    QPainterPath tri;
    if (right) {
        tri.moveTo(11 + shift, 8 + shift);
        tri.lineTo(23 + shift, 16 + shift);
        tri.lineTo(11 + shift, 24 + shift);
    } else {
        tri.moveTo(21 + shift, 8 + shift);
        tri.lineTo(9 + shift, 16 + shift);
        tri.lineTo(21 + shift, 24 + shift);
    }
    tri.closeSubpath();
    p.fillPath(tri, pressed ? QColor(0xFF, 0xFF, 0xFF) : QColor(0x20, 0x30, 0x50));
    return img;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: velmorak-arrowgen FOLDER\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    struct Picture {
        const char* file;
        bool right, pressed;
    };
    for (const Picture& pic :
         {Picture{"ARRL.ICO", false, false}, Picture{"ARRLD.ICO", false, true},
          Picture{"ARRR.ICO", true, false}, Picture{"ARRRD.ICO", true, true}}) {
        const QString path = out.filePath(QString::fromLatin1(pic.file));
        if (!arrow(pic.right, pic.pressed).save(path, "ICO")) {
            std::fprintf(stderr, "velmorak-arrowgen: cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
