#include "XTavixApplication.h"

#include "XMessBox.h"
#include "common/XException.h"
#include "errorHtml.h"

XTavixApplication::XTavixApplication(int& argc, char** argv) : QApplication(argc, argv)
{
    connect(this, &QGuiApplication::lastWindowClosed, this, &XTavixApplication::onLastWindowClosed);
}

bool XTavixApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        m_escaped.push_back(std::current_exception());
        exit();
        return false;
    }
}

void XTavixApplication::rethrowEscaped()
{
    const std::exception_ptr oldest = m_escaped.front();
    m_escaped.pop_front();
    std::rethrow_exception(oldest);
}

void XTavixApplication::onLastWindowClosed()
{
    m_windowsClosed = true;
}

namespace {

void showEscaped(XTavixApplication& application)
{
    try {
        application.rethrowEscaped();
    } catch (const xstd::XExceptionItems& failure) {
        showError(errorHtml(failure));
    } catch (const std::exception& failure) {
        showError(errorHtml(failure, X_HERE, "main"));
    }
}

} // namespace

int runEventLoop(XTavixApplication& application)
{
    for (;;) {
        const int code = application.hasEscaped() ? 0 : application.exec();
        if (!application.hasEscaped())
            return code;
        while (application.hasEscaped())
            showEscaped(application);
        if (application.windowsClosed())
            return code;
    }
}
