/// Prints the manual, a page of HTML, as PDF. Its tables of functions come from the keywords:
///     tavix_make_manual manual.html keywords.txt help.pdf

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextDocument>

namespace {

QString readText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QString row(const QStringList& fields)
{
    const QString call = fields[1].startsWith('"') ? fields[1].mid(1).chopped(1) : fields[1];
    const QString prefix = call + ": ";
    const QString hint = fields[3].startsWith(prefix) ? fields[3].mid(prefix.size()) : fields[3];
    return "<tr><td>" + call.toHtmlEscaped() + "</td><td>" + hint.toHtmlEscaped() + "</td></tr>";
}

/// The table that a mark asks for: the members, the functions that have no table of their own,
/// or those whose names it lists.
QString table(const QString& wanted, const QString& keywords, const QString& manual)
{
    QString rows;
    for (const QString& line : keywords.split('\n')) {
        const QStringList fields = line.split('|');
        if (line.startsWith('#') || fields.size() != 4)
            continue;
        const bool isMember = QRegularExpression("^\\w+\\.\\w").match(fields[1]).hasMatch();
        const bool isListed =
            QRegularExpression("<!--table [^>]*\\b" + fields[0] + "\\b").match(manual).hasMatch();
        const bool belongs = wanted == "members"     ? isMember
                             : wanted == "functions" ? !isMember && !isListed
                                                     : wanted.split(' ').contains(fields[0]);
        if (belongs)
            rows += row(fields);
    }
    return "<table border='1' cellspacing='0' cellpadding='4' width='100%'>" + rows + "</table>";
}

QString withTables(const QString& manual, const QString& keywords)
{
    const QRegularExpression mark("<!--table ([^>]*)-->");
    QString result = manual;
    for (auto found = mark.match(result); found.hasMatch(); found = mark.match(result))
        result.replace(found.capturedStart(), found.capturedLength(),
                       table(found.captured(1), keywords, manual));
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QStringList paths = application.arguments().mid(1);
    if (paths.size() != 3) {
        qCritical("usage: tavix_make_manual manual.html keywords.txt help.pdf");
        return 2;
    }
    QPdfWriter pdf(paths[2]);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setTitle("Tavix");
    QTextDocument document;
    document.setDefaultFont(QFont("WenQuanYi Zen Hei", 11));
    const QString images = QFileInfo(paths[0]).absolutePath() + "/../images/";
    document.setHtml(
        withTables(readText(paths[0]), readText(paths[1])).replace("../images/", images));
    document.print(&pdf);
    return 0;
}
