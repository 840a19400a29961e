/// Draws the icons and cursors that tools/icons/icons.txt describes, each in one and two pixels
/// per point, as NAME.png and NAME@2x.png:  tavix_make_icons icons.txt FOLDER [SHEET.png]
/// With a third argument it also lays all of them out on one sheet, to be looked at.

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>

#include <cmath>
#include <stdexcept>
#include <vector>

namespace {

constexpr double grid = 24;

struct Icon {
    QString name;
    int pixels = 0;
    QStringList strokes;
};

[[noreturn]] void fail(const QString& message)
{
    throw std::runtime_error(message.toStdString());
}

QColor colorOf(const QString& name)
{
    static const QHash<QString, QColor> colors{{"ink", QColor(0x37, 0x44, 0x55)},
                                               {"accent", QColor(0x1f, 0x6f, 0xd6)},
                                               {"tint", QColor(0xd6, 0xe6, 0xfb)},
                                               {"paper", QColor(0xff, 0xff, 0xff)},
                                               {"pale", QColor(0xb4, 0xbf, 0xcc)}};
    if (!colors.contains(name))
        fail("No such colour: " + name);
    return colors[name];
}

/// The letters of our own, strokes on a field of 6 by 10.
QString strokesOf(QChar letter)
{
    static const QHash<QChar, QString> letters{
        {'0', "M 3 0 C 5 0 6 2 6 5 C 6 8 5 10 3 10 C 1 10 0 8 0 5 C 0 2 1 0 3 0 Z"},
        {'1', "M 0.5 2 L 3 0 L 3 10"},
        {'2', "M 0 2.5 C 0 1 1.2 0 3 0 C 4.8 0 6 1.1 6 2.8 C 6 5 0 7.5 0 10 L 6 10"},
        {'4', "M 4.5 10 L 4.5 0 L 0 7 L 6 7"},
        {'5', "M 5.5 0 L 0.8 0 L 0.4 4.5 C 1 4 2 3.7 3 3.7 C 4.8 3.7 6 5 6 6.8 "
              "C 6 8.7 4.8 10 3 10 C 1.6 10 0.5 9.4 0 8.3"},
        {'6', "M 5.3 1 C 3 -1 0 0.5 0 5.6 C 0 8.6 1.2 10 3 10 C 4.8 10 6 8.8 6 7 "
              "C 6 5.2 4.8 4 3 4 C 1.6 4 0.3 4.9 0 6.4"},
        {'8', "M 3 4.6 C 0 4.6 0 0 3 0 C 6 0 6 4.6 3 4.6 C -1 4.6 -1 10 3 10 C 7 10 7 4.6 3 4.6"},
        {'A', "M 0 10 L 3 0 L 6 10 M 1 6.5 L 5 6.5"},
        {'F', "M 0 10 L 0 0 L 6 0 M 0 5 L 4.5 5"}};
    if (!letters.contains(letter))
        fail(QString("No such letter: ") + letter);
    return letters[letter];
}

class PathReader {
public:
    explicit PathReader(const QStringList& words) : m_words(words) {}

    QPainterPath read()
    {
        QPainterPath path;
        while (m_at < m_words.size())
            readStep(path, m_words[m_at++]);
        return path;
    }

private:
    double number()
    {
        bool isNumber = false;
        const double value = m_words.value(m_at++).toDouble(&isNumber);
        if (!isNumber)
            fail("Not a path: " + m_words.join(' '));
        return value;
    }

    QPointF point()
    {
        const double x = number();
        return {x, number()};
    }

    void readStep(QPainterPath& path, const QString& step)
    {
        if (step == "M") {
            path.moveTo(point());
        } else if (step == "L") {
            path.lineTo(point());
        } else if (step == "C") {
            const QPointF leave = point();
            const QPointF arrive = point();
            path.cubicTo(leave, arrive, point());
        } else if (step == "Z") {
            path.closeSubpath();
        } else if (step == "R") {
            const QPointF corner = point();
            const double width = number();
            path.addRect(QRectF(corner, QSizeF(width, number())));
        } else if (step == "O") {
            const QPointF centre = point();
            const double radius = number();
            path.addEllipse(centre, radius, radius);
        } else {
            fail("No such step of a path: " + step);
        }
    }

    QStringList m_words;
    int m_at = 0;
};

QPainterPath textPath(const QStringList& place, const QString& text)
{
    const double height = place[2].toDouble();
    QPainterPath path;
    for (int i = 0; i < text.size(); ++i) {
        const QPainterPath letter = PathReader(strokesOf(text[i]).split(' ')).read();
        const QTransform put =
            QTransform::fromTranslate(place[0].toDouble() + i * height * 0.8, place[1].toDouble())
                .scale(height / 12, height / 10);
        path.addPath(put.map(letter));
    }
    return path;
}

void drawStroke(QPainter& painter, const QString& stroke)
{
    const QStringList words = stroke.split(' ', Qt::SkipEmptyParts);
    const QColor color = colorOf(words.value(1));
    if (words[0] == "fill") {
        painter.fillPath(PathReader(words.mid(2)).read(), color);
        return;
    }
    const QPen pen(color, words.value(2).toDouble(), Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin);
    const bool isText = words[0] == "text" && words.size() == 7;
    if (!isText && words[0] != "line")
        fail("No such stroke: " + stroke);
    painter.strokePath(
        isText ? textPath(words.mid(3, 3), words[6]) : PathReader(words.mid(3)).read(), pen);
}

QImage draw(const Icon& icon, int pixels)
{
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / grid, pixels / grid);
    for (const QString& stroke : icon.strokes)
        drawStroke(painter, stroke);
    return image;
}

std::vector<Icon> readIcons(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail("Can't read " + path);
    std::vector<Icon> icons;
    QTextStream lines(&file);
    while (!lines.atEnd()) {
        const QString line = lines.readLine().trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (line.startsWith('[')) {
            const QStringList head = line.mid(1, line.size() - 2).split(' ');
            icons.push_back({head.value(0), head.value(1).toInt(), {}});
        } else if (!icons.empty()) {
            icons.back().strokes.append(line);
        }
    }
    return icons;
}

void save(const QImage& image, const QString& path)
{
    if (!image.save(path))
        fail("Can't write " + path);
}

/// All icons in 16, 24 and 48 pixels with their names, on the panel's white.
QImage contactSheet(const std::vector<Icon>& icons)
{
    constexpr int columns = 8, width = 150, height = 76;
    const int rows = static_cast<int>(std::ceil(icons.size() / double(columns)));
    QImage sheet(columns * width, rows * height, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (size_t i = 0; i < icons.size(); ++i) {
        const QPoint at(static_cast<int>(i % columns) * width + 6,
                        static_cast<int>(i / columns) * height + 4);
        int x = 0;
        for (const int pixels : {16, 24, 48}) {
            painter.drawImage(at + QPoint(x, 0), draw(icons[i], pixels));
            x += pixels + 8;
        }
        painter.drawText(at + QPoint(0, 64), icons[i].name);
    }
    return sheet;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3) {
        qCritical("usage: tavix_make_icons icons.txt FOLDER [SHEET.png]");
        return 2;
    }
    try {
        const std::vector<Icon> icons = readIcons(arguments[1]);
        for (const Icon& icon : icons) {
            const QString path = arguments[2] + '/' + icon.name;
            save(draw(icon, icon.pixels), path + ".png");
            save(draw(icon, 2 * icon.pixels), path + "@2x.png");
        }
        if (arguments.size() > 3)
            save(contactSheet(icons), arguments[3]);
    } catch (const std::exception& failure) {
        qCritical("%s", failure.what());
        return 1;
    }
    return 0;
}
