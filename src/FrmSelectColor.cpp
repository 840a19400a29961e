#include "FrmSelectColor.h"

#include "UserPrompts.h"

#include <QColorDialog>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QToolButton>

#include <algorithm>
#include <iterator>

namespace {

struct NamedColor {
    const char* name;
    const char* hex;
};

const NamedColor namedColors[] = {
    {"灰色", "#7F7F7F"},   {"红色", "#FF0000"}, {"橙色", "#E47833"}, {"铜色", "#B87333"},
    {"巧克力", "#D2691E"}, {"粉红", "#BC8F8F"}, {"绿色", "#00FF00"}, {"暗绿", "#228B22"},
    {"青色", "#00FFFF"},   {"碧绿", "#70DB93"}, {"藏青", "#5F9F9F"}, {"蓝色", "#0000FF"},
    {"深蓝色", "#191970"}, {"钴色", "#3D59AB"}, {"洋红", "#FF00FF"}, {"香粉红", "#FF1CAE"},
    {"蓝紫", "#9F5F9F"},   {"褐色", "#A62AA2"}, {"紫色", "#9932CD"}, {"黄色", "#FFFF00"},
    {"秋叶", "#DBDB70"},   {"镉黄", "#FF9912"}, {"金黄", "#FFD700"}, {"黄花", "#DAA569"},
};

constexpr int darkShades = 12;
constexpr int lightShades = 36;
constexpr int shades = darkShades + lightShades;
constexpr int largestSide = 24;
constexpr int smallestSide = 6;
constexpr int swatchBorder = 2; // both sides together
constexpr size_t recentCount = 10;

// One sheet for the whole table: a sheet of its own for each of some thousand swatches would
// keep the popup from opening at once.
const char* const sheet =
    "QFrame#frame{background:white;border:1px solid rgb(200,208,222);}"
    "QToolButton{border:1px solid rgb(240,240,240);background:white;}"
    "QToolButton:checked{border:2px solid rgb(255,200,200);background:rgb(255,230,230);}"
    "QToolButton:hover{border:1px solid rgb(100,200,255);background-color:rgb(230,240,255);}";

/// The colours that were chosen last, newest first; all popups share them.
std::vector<QColor>& recentColors()
{
    static std::vector<QColor> colors;
    return colors;
}

void keepRecent(const QColor& color)
{
    std::vector<QColor>& colors = recentColors();
    colors.erase(std::remove(colors.begin(), colors.end(), color), colors.end());
    colors.insert(colors.begin(), color);
    colors.resize(std::min(colors.size(), recentCount));
}

int darker(int channel, int i)
{
    return channel - channel * (darkShades - i) / darkShades;
}

int lighter(int channel, int i)
{
    return channel + (255 - channel) * i / (lightShades - 1);
}

QColor shade(const QColor& color, int i)
{
    const auto channel = [i](int c) {
        return i < darkShades ? darker(c, i) : lighter(c, i - darkShades);
    };
    return QColor(channel(color.red()), channel(color.green()), channel(color.blue()));
}

QString tip(const QString& name, const QColor& color)
{
    return QString("%1: rgb(%2, %3, %4, %5)")
        .arg(name)
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue())
        .arg(color.alpha());
}

QIcon solidIcon(const QColor& color)
{
    QPixmap pixmap(largestSide, largestSide);
    pixmap.fill(color);
    return QIcon(pixmap);
}

} // namespace

FrmSelectColor::FrmSelectColor(QWidget* parent)
    : QDialog(parent, Qt::FramelessWindowHint | Qt::Popup)
{
    setObjectName("UiSelectColor");
    auto* outer = new QGridLayout(this);
    outer->setObjectName("gridLayout");
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSizeConstraint(QLayout::SetFixedSize);
    m_frame = new QFrame(this);
    m_frame->setObjectName("frame");
    m_frame->setStyleSheet(sheet);
    outer->addWidget(m_frame);
    m_grid = new QGridLayout(m_frame);
    m_grid->setObjectName("frameLatout");
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(0);
    addTopRow();
    int row = 1;
    for (const NamedColor& color : namedColors)
        addNamedColor(row++, color.name, QColor(color.hex));
}

void FrmSelectColor::addTopRow()
{
    QToolButton* none = addSwatch(0, 0, "无颜色(透明色)", QColor(0, 0, 0, 0));
    none->setText("无颜色(透明色)");
    none->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_grid->addWidget(none, 0, 0, 1, 16);
    auto* label = new QLabel("最近使用", m_frame);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_grid->addWidget(label, 0, 16, 1, 6);
    for (size_t i = 0; i < recentCount; ++i)
        m_recent.push_back(addSwatch(0, 22 + static_cast<int>(i), QString(), Qt::white));
    auto* more = new QToolButton(m_frame);
    more->setText("更多颜色...");
    more->setToolTip("更多颜色...");
    more->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_grid->addWidget(more, 0, 33, 1, 16);
    connect(more, &QToolButton::clicked, this, &FrmSelectColor::askColor);
}

void FrmSelectColor::addNamedColor(int row, const QString& name, const QColor& color)
{
    auto* label = new QLabel(name, m_frame);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setStyleSheet("QLabel{color:" + color.name().toUpper() + ";}");
    label->setContentsMargins(6, 0, 4, 0);
    m_grid->addWidget(label, row, 0);
    for (int i = 0; i < shades; ++i)
        addSwatch(row, 1 + i, name, shade(color, i));
}

QToolButton* FrmSelectColor::addSwatch(int row, int column, const QString& name,
                                       const QColor& color)
{
    auto* button = new QToolButton(m_frame);
    button->setCheckable(true);
    setSwatch(button, name, color);
    m_grid->addWidget(button, row, column);
    connect(button, &QToolButton::clicked, this, &FrmSelectColor::onColorClicked);
    return button;
}

void FrmSelectColor::setSwatch(QToolButton* button, const QString& name, const QColor& color)
{
    button->setIcon(solidIcon(color));
    button->setToolTip(tip(name, color));
    m_colors[button] = color;
}

void FrmSelectColor::fitInto(const QSize& screen)
{
    int names = 0;
    for (const QLabel* label : m_frame->findChildren<QLabel*>()) {
        if (!label->styleSheet().isEmpty())
            names = std::max(names, label->sizeHint().width());
    }
    const int rows = static_cast<int>(std::size(namedColors)) + 1;
    const int fitting =
        std::min((screen.width() - names - 2) / shades, (screen.height() - 2) / rows);
    m_side = std::clamp(fitting - swatchBorder, smallestSide, largestSide);
    const int whole = m_side + swatchBorder;
    for (const auto& [button, color] : m_colors) {
        button->setIconSize(QSize(m_side, m_side));
        if (button->text().isEmpty())
            button->setFixedSize(whole, whole);
        else
            button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }
    layout()->activate();
    adjustSize();
}

void FrmSelectColor::showEvent(QShowEvent* event)
{
    showRecent();
    QDialog::showEvent(event);
}

void FrmSelectColor::showRecent()
{
    const std::vector<QColor>& colors = recentColors();
    for (size_t i = 0; i < m_recent.size(); ++i) {
        QToolButton* button = m_recent[i];
        button->setEnabled(i < colors.size());
        if (i < colors.size())
            setSwatch(button, "最近使用", colors[i]);
    }
}

void FrmSelectColor::mousePressEvent(QMouseEvent* event)
{
    // The press that closes the popup must not reach the button under it as well.
    setAttribute(Qt::WA_NoMouseReplay);
    QDialog::mousePressEvent(event);
}

void FrmSelectColor::onColorClicked(bool)
{
    auto* button = static_cast<QToolButton*>(sender());
    if (m_current)
        m_current->setChecked(false);
    m_current = button;
    m_current->setChecked(true);
    choose(m_colors[button]);
}

void FrmSelectColor::askColor()
{
    // The popup holds the pointer: it goes before the dialog comes. The dialog belongs to the
    // window, not to the panel, whose style sheet would reach into it.
    close();
    const auto& answer = userPrompts().color;
    const QColor color = answer
                             ? answer(m_selected)
                             : QColorDialog::getColor(m_selected, parentWidget()->window(),
                                                      "更多颜色", QColorDialog::ShowAlphaChannel);
    if (color.isValid())
        choose(color);
}

void FrmSelectColor::choose(const QColor& color)
{
    m_selected = color;
    keepRecent(color);
    emit onColorSelected(color);
    close();
}
