#include "KeyWordHint.h"
#include "common/XException.h"
#include "script/XScript.h"
#include "script/XScriptEnvBase.h"
#include "script/XScriptRunner.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QListView>

#include <gtest/gtest.h>

namespace {

std::vector<QString> order(const KeyWordModel& model)
{
    std::vector<QString> names;
    for (int row = 0; row < model.rowCount(); ++row)
        names.push_back(model.itemAt(model.index(row))->name);
    return names;
}

TEST(KeyWords, AreScoredByTheirLongestRuns)
{
    const struct {
        const char* text;
        const char* word;
        uint64_t score;
    } rows[] = {{"", "a", 0},      {"sum", "", 0},    {"sum", "sum", 4},
                {"SUM", "sum", 4}, {"sqrt", "qr", 2}, {"abcd", "axcd", 3},
                {"ab", "abab", 2}, {"xaxb", "ab", 1}, {"xyz", "abc", 0}};
    for (const auto& row : rows)
        EXPECT_EQ(keyWordScore(row.text, row.word), row.score) << row.text << ' ' << row.word;
    EXPECT_GT(keyWordScore(QString(200, 'a'), QString(100, 'a')), uint64_t(1) << 60);
}

TEST(KeyWords, AreListedTheBestFirstAndOfEqualOnesTheShortest)
{
    KeyWordModel model;
    const QAbstractItemModelTester tester(&model);
    for (const char* name : {"length", "sum", "summary", "abs"})
        model.add({name, QString("%1()").arg(name), "", ""});
    model.filter("");
    EXPECT_EQ(order(model).back(), "summary");
    model.filter("su");
    EXPECT_EQ(order(model), (std::vector<QString>{"sum", "summary", "abs", "length"}));
    EXPECT_EQ(model.data(model.index(0), Qt::DisplayRole), "sum()");
    EXPECT_EQ(model.find("ABS")->name, "abs");
    EXPECT_EQ(model.find("none"), nullptr);
    EXPECT_EQ(model.itemAt(model.index(9)), nullptr);
}

TEST(KeyWordPopup, IsAsHighAsTwentyRowsAndStaysInsideOfItsRows)
{
    KeyWordHint popup;
    popup.updateSize();
    EXPECT_EQ(popup.height(), 60);
    for (int i = 0; i < 25; ++i)
        popup.add({QString("word%1").arg(i), "display", "", ""});
    popup.updateSize();
    EXPECT_EQ(popup.height(), 20 * QFontMetrics(popup.font()).height() + 60);
    popup.selectPrev();
    EXPECT_EQ(popup.list()->currentIndex().row(), 0);
    for (int i = 0; i < 40; ++i)
        popup.selectNext();
    EXPECT_EQ(popup.list()->currentIndex().row(), 24);
    popup.keyclicked(QModelIndex()); // an empty place
}

/// Whether a member of this name exists on a value of some class. A value that has none of that
/// name says so; one that has may still want arguments.
bool isMember(const xstd::XString& name)
{
    const char* const values[] = {"7",        "1.5",      "(1.5 + 2i)", "%(7) 3",
                                  "\"text\"", "1.5.data", "time()"};
    for (const char* value : values) {
        try {
            huge::XScript script(xstd::XString("(") + value + ")." + name);
            script.compile();
            huge::XScriptRunner(script.program(), std::make_shared<huge::XScriptEnv_base>()).run();
            return true;
        } catch (const xstd::XExceptionItems& failure) {
            if (failure.toString().find("not suport " + name) == xstd::XString::npos)
                return true;
        }
    }
    return false;
}

// The list that the program ships and the engine agree.
TEST(KeyWordList, NamesWhatTheEngineKnows)
{
    QFile file(TAVIX_SOURCE_FOLDER "/config/keywords.txt");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::vector<KeyWordItem> items = parseKeyWords(QString::fromUtf8(file.readAll()));
    EXPECT_GT(items.size(), 90u);
    const QStringList language{"if",     "else",  "iif",      "for", "var",
                               "return", "break", "continue", "ret"};
    const QStringList cells{"max", "min", "sum", "avg", "count", "sigma", "pai"};
    huge::XScriptEnv_base env;
    for (const KeyWordItem& item : items) {
        const std::string name = item.name.toStdString();
        EXPECT_FALSE(item.display.isEmpty() || item.insertText.isEmpty() || item.hintInfo.isEmpty())
            << name;
        const bool isBuiltIn = env.getVar(item.name.toLower().toStdString()).object() != nullptr;
        EXPECT_TRUE(language.contains(item.name) || cells.contains(item.name) || isBuiltIn ||
                    isMember(name))
            << name;
    }
}

} // namespace
