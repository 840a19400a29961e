#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace {

const char* const icons24[] = {"Blod",
                               "alignCenter",
                               "alignLeft",
                               "alignRight",
                               "alignVBottom",
                               "alignVCenter",
                               "alignVTop",
                               "avg",
                               "background",
                               "blodborder",
                               "blodborder2",
                               "border",
                               "border2",
                               "bottomline",
                               "cancel",
                               "copy",
                               "cut",
                               "dec1",
                               "dec2",
                               "expand",
                               "help",
                               "innerline",
                               "insert",
                               "insertCol",
                               "insertRow",
                               "italic",
                               "leftline",
                               "mod2",
                               "moveRectDown",
                               "moveRectLeft",
                               "moveRectRight",
                               "moveRectUp",
                               "newfile",
                               "nullline",
                               "numbersperate",
                               "numbersperate2",
                               "numbersperate_add",
                               "numbersperate_dec",
                               "ok",
                               "openfile",
                               "pasteScript",
                               "pasteStyle",
                               "pasteText",
                               "percent",
                               "radix10",
                               "radix16",
                               "radix2",
                               "radix58",
                               "radix64",
                               "radix8",
                               "redo",
                               "reduce",
                               "refresh",
                               "remove",
                               "removeCol",
                               "removeRow",
                               "rightline",
                               "save",
                               "saveall",
                               "saveas",
                               "setfont_color",
                               "sign",
                               "style2",
                               "stylecopy",
                               "stylepaste",
                               "sum",
                               "toolPanel",
                               "topline",
                               "transpose",
                               "underline",
                               "undo",
                               "CellCopy",
                               "CellMove",
                               "hresize",
                               "vresize",
                               "brush_cursor",
                               "calc_cursor"};
const char* const icons32[] = {"borderColor", "clearStyle", "fonticon",  "multline",
                               "paste",       "ref",        "stylebrush"};

QString iconPath(const QString& name)
{
    return TAVIX_SOURCE_FOLDER "/icons/" + name;
}

void expectPicture(const QString& name, int pixels)
{
    const QImage image(iconPath(name));
    EXPECT_EQ(image.size(), QSize(pixels, pixels)) << name.toStdString();
    bool isEmpty = true;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            isEmpty &= image.pixelColor(x, y).alpha() == 0;
    EXPECT_FALSE(isEmpty) << name.toStdString();
}

void expectBothScales(const QString& name, int pixels)
{
    expectPicture(name + ".png", pixels);
    expectPicture(name + "@2x.png", 2 * pixels);
}

} // namespace

TEST(Assets, EveryIconLoadsInBothScales)
{
    for (const char* name : icons24)
        expectBothScales(name, 24);
    for (const char* name : icons32)
        expectBothScales(name, 32);
    expectBothScales("combobox_down_arrow", 12);
}

TEST(Assets, EveryFileThatTheProgramNamesExists)
{
    static const QRegularExpression named("\\./icons/(\\w+\\.(?:png|jpg|ico))");
    const QDir sources(TAVIX_SOURCE_FOLDER "/src");
    QSet<QString> found;
    for (const QString& name : sources.entryList({"*.cpp"}, QDir::Files)) {
        QFile file(sources.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        auto match = named.globalMatch(QString::fromUtf8(file.readAll()));
        while (match.hasNext())
            found.insert(match.next().captured(1));
    }
    EXPECT_FALSE(found.isEmpty());
    for (const QString& name : found)
        EXPECT_FALSE(QImage(iconPath(name)).isNull()) << name.toStdString();
}

TEST(Assets, ApplicationIconAndSplashLoad)
{
    EXPECT_FALSE(QImage(iconPath("application.ico")).isNull());
    EXPECT_FALSE(QImage(iconPath("main3.jpg")).isNull());
}
