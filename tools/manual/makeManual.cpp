/// Prints the manual, a page of HTML, as PDF:  tavix_make_manual manual.html help.pdf

#include <QFile>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QTextDocument>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QFile source(application.arguments().value(1));
    if (argc != 3 || !source.open(QIODevice::ReadOnly)) {
        qCritical("usage: tavix_make_manual manual.html help.pdf");
        return 2;
    }
    QPdfWriter pdf(application.arguments()[2]);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setTitle("Tavix");
    QTextDocument document;
    document.setDefaultFont(QFont("WenQuanYi Zen Hei", 11));
    document.setHtml(QString::fromUtf8(source.readAll()));
    document.print(&pdf);
    return 0;
}
