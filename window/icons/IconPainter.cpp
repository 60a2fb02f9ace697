// Build-time tool: paints the window's tool-bar icons and button backgrounds
// as PNG files and writes the resource list that embeds them under ":/Icons".
// Every icon is drawn on a 36-unit canvas, rendered at twice that size, with
// one stroke colour and one accent so the set reads as one family.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

const QColor kInk(0x37, 0x47, 0x4f);
const QColor kAccent(0x1e, 0x88, 0xe5);
const QColor kAccentSoft(0x1e, 0x88, 0xe5, 110);
constexpr int kPixels = 72;

QPen ink(double width = 2.2) {
    return QPen(kInk, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// An oblique cube: front square and the back square shifted up-right.
struct Cube {
    QPointF f[4] = {{6, 13}, {23, 13}, {23, 30}, {6, 30}};  // tl, tr, br, bl
    QPointF b[4] = {{13, 6}, {30, 6}, {30, 23}, {13, 23}};
    QPolygonF face(int which) const {
        switch (which) {
            case 0:
                return QPolygonF({f[0], f[1], b[1], b[0]});  // top
            case 1:
                return QPolygonF({f[3], f[2], b[2], b[3]});  // bottom
            case 2:
                return QPolygonF({f[0], f[1], f[2], f[3]});  // front
            case 3:
                return QPolygonF({b[0], b[1], b[2], b[3]});  // back
            case 4:
                return QPolygonF({f[0], b[0], b[3], f[3]});  // left
            default:
                return QPolygonF({f[1], b[1], b[2], f[2]});  // right
        }
    }
};

// The cube with the faces in `shaded` filled; hidden edges dashed.
void cube(QPainter& p, std::vector<int> shaded) {
    const Cube c;
    p.setPen(Qt::NoPen);
    for (size_t i = 0; i < shaded.size(); ++i) {
        QColor fill = kAccent;
        fill.setAlpha(shaded.size() == 1 ? 150 : 90 + 50 * int(i));
        p.setBrush(fill);
        p.drawPolygon(c.face(shaded[i]));
    }
    p.setBrush(Qt::NoBrush);
    QPen hidden = ink(1.3);
    hidden.setStyle(Qt::DashLine);
    p.setPen(hidden);
    p.drawLine(c.b[3], c.b[0]);
    p.drawLine(c.b[3], c.b[2]);
    p.drawLine(c.b[3], c.f[3]);
    p.setPen(ink());
    p.drawPolygon(c.face(2));
    p.drawPolyline(QPolygonF({c.f[0], c.b[0], c.b[1], c.b[2], c.f[2]}));
    p.drawLine(c.f[1], c.b[1]);
}

void dot(QPainter& p, QPointF at, double r, const QColor& colour = kInk) {
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawEllipse(at, r, r);
    p.setBrush(Qt::NoBrush);
}

void background(QPainter& p, const QColor& fill, const QColor& border) {
    p.setPen(QPen(border, 1.5));
    p.setBrush(fill);
    p.drawRoundedRect(QRectF(1, 1, 34, 34), 4, 4);
}

using Paint = std::function<void(QPainter&)>;
struct Icon {
    const char* name;
    Paint paint;
};

std::vector<Icon> icons() {
    return {
        {"open",
         [](QPainter& p) {
             p.setPen(ink());
             p.setBrush(QColor(0xff, 0xe0, 0x82));
             p.drawPolygon(QPolygonF({{4, 10}, {13, 10}, {16, 13}, {32, 13}, {32, 30}, {4, 30}}));
             p.setPen(QPen(kAccent, 2.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
             p.drawLine(QPointF(18, 27), QPointF(18, 17));
             p.drawPolyline(QPolygonF({{14, 21}, {18, 17}, {22, 21}}));
         }},
        {"screenshot",
         [](QPainter& p) {
             p.setPen(ink());
             p.drawRoundedRect(QRectF(4, 11, 28, 19), 3, 3);
             p.drawPolyline(QPolygonF({{12, 11}, {14, 7}, {22, 7}, {24, 11}}));
             p.setBrush(kAccentSoft);
             p.drawEllipse(QPointF(18, 20.5), 6, 6);
             dot(p, QPointF(27.5, 15), 1.3);
         }},
        {"points",
         [](QPainter& p) {
             for (int i = 0; i < 3; ++i)
                 for (int j = 0; j < 3; ++j)
                     dot(p, QPointF(8 + 10 * i + (j % 2) * 2, 8 + 10 * j), 2.6,
                         (i + j) % 2 ? kInk : kAccent);
         }},
        {"edges",
         [](QPainter& p) {
             p.setPen(ink(1.8));
             p.drawPolygon(QPolygonF({{5, 30}, {18, 6}, {31, 30}}));
             p.drawPolyline(QPolygonF({{11.5, 18}, {24.5, 18}, {18, 30}, {11.5, 18}}));
             for (QPointF v : {QPointF(5, 30), QPointF(18, 6), QPointF(31, 30), QPointF(11.5, 18),
                               QPointF(24.5, 18), QPointF(18, 30)})
                 dot(p, v, 2.0, kAccent);
         }},
        {"faces",
         [](QPainter& p) {
             p.setPen(ink(1.8));
             p.setBrush(kAccent);
             p.drawPolygon(QPolygonF({{11.5, 18}, {24.5, 18}, {18, 30}}));
             p.setBrush(QColor(0x90, 0xca, 0xf9));
             p.drawPolygon(QPolygonF({{5, 30}, {11.5, 18}, {18, 30}}));
             p.drawPolygon(QPolygonF({{18, 30}, {24.5, 18}, {31, 30}}));
             p.drawPolygon(QPolygonF({{11.5, 18}, {18, 6}, {24.5, 18}}));
         }},
        {"pointsize",
         [](QPainter& p) {
             dot(p, QPointF(7, 10), 2);
             dot(p, QPointF(16, 10), 3.2);
             dot(p, QPointF(28, 10), 4.6, kAccent);
             p.setPen(QPen(kInk, 1.2, Qt::SolidLine, Qt::RoundCap));
             p.drawLine(QPointF(5, 21), QPointF(31, 21));
             p.setPen(QPen(kInk, 2.4, Qt::SolidLine, Qt::RoundCap));
             p.drawLine(QPointF(5, 26), QPointF(31, 26));
             p.setPen(QPen(kAccent, 4, Qt::SolidLine, Qt::RoundCap));
             p.drawLine(QPointF(5, 32), QPointF(31, 32));
         }},
        {"colorbar",
         [](QPainter& p) {
             QLinearGradient ramp(0, 5, 0, 31);
             ramp.setColorAt(0, Qt::red);
             ramp.setColorAt(0.33, Qt::yellow);
             ramp.setColorAt(0.5, Qt::green);
             ramp.setColorAt(0.67, Qt::cyan);
             ramp.setColorAt(1, Qt::blue);
             p.setPen(ink(1.5));
             p.setBrush(ramp);
             p.drawRect(QRectF(8, 5, 9, 26));
             for (int i = 0; i < 5; ++i)
                 p.drawLine(QPointF(20, 5 + 6.5 * i), QPointF(28 - (i % 2) * 3, 5 + 6.5 * i));
         }},
        {"lights",
         [](QPainter& p) {
             p.setPen(ink());
             p.setBrush(QColor(0xff, 0xd5, 0x4f));
             QPainterPath bulb;
             bulb.moveTo(14, 24);
             bulb.cubicTo(14, 19, 8, 17, 8, 12);
             bulb.cubicTo(8, 6, 13, 3, 18, 3);
             bulb.cubicTo(23, 3, 28, 6, 28, 12);
             bulb.cubicTo(28, 17, 22, 19, 22, 24);
             bulb.closeSubpath();
             p.drawPath(bulb);
             p.setBrush(Qt::NoBrush);
             p.drawLine(QPointF(14, 27.5), QPointF(22, 27.5));
             p.drawLine(QPointF(15.5, 31), QPointF(20.5, 31));
         }},
        {"coord",
         [](QPainter& p) {
             const QPointF o(12, 24);
             auto axis = [&](QPointF end, const QColor& colour) {
                 p.setPen(QPen(colour, 2.4, Qt::SolidLine, Qt::RoundCap));
                 p.drawLine(o, end);
                 dot(p, end, 2.4, colour);
             };
             axis(QPointF(32, 24), QColor(0xe5, 0x39, 0x35));
             axis(QPointF(12, 4), QColor(0x43, 0xa0, 0x47));
             axis(QPointF(3, 33), kAccent);
             dot(p, o, 2.2);
         }},
        {"bbox",
         [](QPainter& p) {
             cube(p, {});
             for (QPointF v : Cube().f)
                 dot(p, v, 2.0, kAccent);
             for (QPointF v : Cube().b)
                 dot(p, v, 2.0, kAccent);
         }},
        {"zoomfit",
         [](QPainter& p) {
             p.setPen(ink(2.4));
             for (int sx : {-1, 1})
                 for (int sy : {-1, 1}) {
                     const QPointF c(18 + sx * 13, 18 + sy * 13);
                     p.drawLine(c, c - QPointF(sx * 7, 0));
                     p.drawLine(c, c - QPointF(0, sy * 7));
                 }
             p.setPen(Qt::NoPen);
             p.setBrush(kAccentSoft);
             p.drawRect(QRectF(11, 11, 14, 14));
             p.setPen(QPen(kAccent, 1.8));
             p.setBrush(Qt::NoBrush);
             p.drawRect(QRectF(11, 11, 14, 14));
         }},
        {"oblique",
         [](QPainter& p) {
             cube(p, {4, 2, 0});
         }},
        {"up", [](QPainter& p) { cube(p, {0}); }},
        {"down", [](QPainter& p) { cube(p, {1}); }},
        {"left", [](QPainter& p) { cube(p, {4}); }},
        {"right", [](QPainter& p) { cube(p, {5}); }},
        {"front", [](QPainter& p) { cube(p, {2}); }},
        {"back", [](QPainter& p) { cube(p, {3}); }},
        {"erase",
         [](QPainter& p) {
             p.translate(18, 17);
             p.rotate(-40);
             p.setPen(ink());
             p.setBrush(QColor(0xef, 0x9a, 0x9a));
             p.drawRoundedRect(QRectF(-12, -6, 12, 12), 2, 2);
             p.setBrush(Qt::white);
             p.drawRoundedRect(QRectF(0, -6, 12, 12), 2, 2);
             p.resetTransform();
             p.scale(kPixels / 36.0, kPixels / 36.0);
             p.setPen(ink(1.6));
             p.drawLine(QPointF(10, 31), QPointF(31, 31));
         }},
        {"bg_color",
         [](QPainter& p) {
             p.setPen(ink());
             QLinearGradient sky(0, 5, 0, 31);
             sky.setColorAt(0, QColor(0x26, 0x32, 0x38));
             sky.setColorAt(1, QColor(0x90, 0xa4, 0xae));
             p.setBrush(sky);
             p.drawRoundedRect(QRectF(4, 5, 28, 26), 3, 3);
             dot(p, QPointF(13, 18), 3.5, QColor(0xe5, 0x39, 0x35));
             dot(p, QPointF(19, 13), 3.5, QColor(0x43, 0xa0, 0x47));
             dot(p, QPointF(24, 20), 3.5, kAccent);
         }},
        {"3D",
         [](QPainter& p) {
             QLinearGradient heights(0, 30, 0, 8);
             heights.setColorAt(0, Qt::blue);
             heights.setColorAt(0.5, Qt::green);
             heights.setColorAt(1, Qt::red);
             QPainterPath relief;
             relief.moveTo(4, 30);
             relief.lineTo(4, 24);
             relief.cubicTo(10, 24, 11, 8, 17, 8);
             relief.cubicTo(22, 8, 23, 19, 27, 19);
             relief.cubicTo(30, 19, 31, 16, 32, 16);
             relief.lineTo(32, 30);
             relief.closeSubpath();
             p.setPen(ink(1.8));
             p.setBrush(heights);
             p.drawPath(relief);
         }},
        {"lasso",
         [](QPainter& p) {
             // Points inside the loop in the accent colour, outside in ink.
             for (QPointF v : {QPointF(14, 15), QPointF(20, 12), QPointF(22, 19), QPointF(15, 21)})
                 dot(p, v, 2.2, kAccent);
             for (QPointF v : {QPointF(5, 7), QPointF(31, 9), QPointF(30, 27), QPointF(6, 27)})
                 dot(p, v, 2.0);
             QPainterPath loop;
             loop.moveTo(9, 16);
             loop.cubicTo(8, 7, 25, 4, 28, 13);
             loop.cubicTo(31, 21, 22, 27, 15, 26);
             loop.cubicTo(10, 25, 9, 21, 9, 16);
             p.setPen(QPen(kInk, 1.8, Qt::DashLine, Qt::RoundCap, Qt::RoundJoin));
             p.setBrush(Qt::NoBrush);
             p.drawPath(loop);
             p.setPen(ink(1.8));
             p.drawLine(QPointF(15, 26), QPointF(12, 33));
         }},
        {"pick",
         [](QPainter& p) {
             // A cross-hair on a point, with the arrow that clicks it.
             dot(p, QPointF(14, 14), 3.2, kAccent);
             p.setPen(ink(1.6));
             p.setBrush(Qt::NoBrush);
             p.drawEllipse(QPointF(14, 14), 8, 8);
             p.drawLine(QPointF(14, 2), QPointF(14, 8));
             p.drawLine(QPointF(14, 20), QPointF(14, 26));
             p.drawLine(QPointF(2, 14), QPointF(8, 14));
             p.drawLine(QPointF(20, 14), QPointF(26, 14));
             p.setPen(ink(1.4));
             p.setBrush(Qt::white);
             p.drawPolygon(
                 QPolygonF({{18, 18}, {32, 24}, {26, 26}, {30, 32}, {28, 33}, {24, 28}, {20, 32}}));
         }},
        {"edl",
         [](QPainter& p) {
             // A cloud of dots in two layers, the nearer one ringed in ink
             // where it stands in front of the farther.
             for (int i = 0; i < 4; ++i)
                 for (int j = 0; j < 4; ++j)
                     dot(p, QPointF(6 + 6 * i, 6 + 6 * j), 2.0, QColor(0x90, 0xca, 0xf9));
             p.setPen(ink(2.2));
             p.setBrush(kAccent);
             p.drawEllipse(QPointF(23, 23), 9, 9);
             p.setPen(Qt::NoPen);
             p.setBrush(QColor(0xbb, 0xde, 0xfb));
             p.drawEllipse(QPointF(20.5, 20.5), 3, 3);
         }},
        {"measure",
         [](QPainter& p) {
             // A ruler laid across, with a dimension line and its two ends.
             p.setPen(ink(1.8));
             p.setBrush(QColor(0xff, 0xf3, 0xc4));
             p.save();
             p.translate(18, 22);
             p.rotate(-30);
             p.drawRect(QRectF(-15, -4, 30, 8));
             for (int i = -12; i <= 12; i += 4)
                 p.drawLine(QPointF(i, -4), QPointF(i, i % 8 == 0 ? 1 : -1));
             p.restore();
             p.setPen(QPen(kAccent, 2.0, Qt::SolidLine, Qt::RoundCap));
             p.drawLine(QPointF(6, 9), QPointF(30, 9));
             dot(p, QPointF(6, 9), 2.4, kAccent);
             dot(p, QPointF(30, 9), 2.4, kAccent);
         }},
        {"bg-default", [](QPainter& p) { background(p, Qt::white, QColor(0xe0, 0xe0, 0xe0)); }},
        {"bg-hover",
         [](QPainter& p) { background(p, QColor(0xe3, 0xf2, 0xfd), QColor(0x90, 0xca, 0xf9)); }},
        {"bg-selected", [](QPainter& p) { background(p, QColor(0xbb, 0xde, 0xfb), kAccent); }},
    };
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT_DIR\n", argv[0]);
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    if (!out.mkpath(".")) return 1;
    QFile qrc(out.filePath("icons.qrc"));
    if (!qrc.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 1;
    QTextStream list(&qrc);
    list << "<RCC>\n  <qresource prefix=\"/Icons\">\n";
    // A contact sheet of the whole set on white, for looking the set over.
    const std::vector<Icon> all = icons();
    QImage sheet(int(all.size()) * (kPixels + 8), kPixels + 8, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter sheetPainter(&sheet);
    int column = 0;
    for (const Icon& icon : all) {
        QImage image(kPixels, kPixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(kPixels / 36.0, kPixels / 36.0);
        icon.paint(painter);
        painter.end();
        const QString file = QString::fromLatin1(icon.name) + ".png";
        if (!image.save(out.filePath(file), "PNG")) return 1;
        sheetPainter.drawImage(4 + column++ * (kPixels + 8), 4, image);
        list << "    <file>" << file << "</file>\n";
    }
    list << "  </qresource>\n</RCC>\n";
    sheetPainter.end();
    sheet.save(out.filePath("sheet.png"), "PNG");
    return 0;
}
