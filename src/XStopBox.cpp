#include "XStopBox.h"

#include "common/XStop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr qint64 patience = 500; // ms until the box shows
constexpr qint64 restTime = 300; // ms without a look: another calculation
constexpr int eventTime = 10;    // ms for the box and repaints at a look

} // namespace

XStopBox::XStopBox()
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowStaysOnTopHint),
      m_label(new QLabel(this))
{
    setObjectName("stopBox");
    setWindowTitle("tavix");
    setWindowModality(Qt::ApplicationModal);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 18, 24, 18);
    layout->setSpacing(14);
    m_label->setMinimumWidth(220);
    m_label->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_label);
    auto* button = new QPushButton("停止(Esc)", this);
    connect(button, &QPushButton::clicked, this, &XStopBox::reject);
    layout->addWidget(button);
    // Before the event loop waits it has nothing left to do: no calculation runs.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &XStopBox::rest);
    xstd::XStop::setHandler([this] { look(); });
}

XStopBox::~XStopBox()
{
    xstd::XStop::setHandler({});
}

void XStopBox::reject()
{
    m_isWanted = true;
}

void XStopBox::rest()
{
    if (s_isCalculating)
        return;
    m_clock.invalidate();
    m_isWanted = false;
    hide();
}

void XStopBox::look()
{
    if (s_isCalculating)
        return; // a repaint formats numbers, which asks again
    if (!m_clock.isValid() || m_lastLook.elapsed() > restTime)
        m_clock.start();
    m_lastLook.start();
    if (m_clock.elapsed() < patience)
        return;
    const QScopedValueRollback<bool> guard(s_isCalculating, true);
    m_label->setText(QString("正在计算  %1 秒").arg(double(m_clock.elapsed()) / 1000, 0, 'f', 1));
    if (!isVisible()) {
        show();
        raise();
        activateWindow();
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents, eventTime);
    m_lastLook.start(); // the events may have taken long
    // Only now: a repaint must not meet the flag.
    if (std::exchange(m_isWanted, false)) {
        xstd::XStop::request();
        hide();
    }
}
