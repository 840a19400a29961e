#include "cell/XCellVarRange.h"
#include "Sheet.h"
#include "script/XScriptEnvBase.h"
#include "script/XVarClosure.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace huge {

namespace {

/// Two columns with a hole: A1 1, A2 empty, A3 5, B1 10, and some cells aside.
class FilledSheet : public Sheet {
public:
    FilledSheet()
    {
        set("A1", "1");
        set("A3", "5");
        set("B1", "10");
        set("D1", "'word'");
        set("D2", "1 / A2"); // division by zero
        set("D3", "[x] x * 2");
    }
    /// What a formula shows in a cell of its own.
    std::string result(const char* formula)
    {
        set("F5", formula);
        return value("F5");
    }
};

struct FormulaCase {
    const char* formula;
    const char* result;
};

std::ostream& operator<<(std::ostream& out, const FormulaCase& c)
{
    return out << c.formula;
}

class Formula : public ::testing::TestWithParam<FormulaCase> {
protected:
    FilledSheet sheet;
};

TEST_P(Formula, Gives)
{
    EXPECT_EQ(sheet.result(GetParam().formula), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    AReferenceStandsForItsFirstValue, Formula,
    ::testing::Values(
        FormulaCase{"A1 + 1", "2"}, FormulaCase{"1 + A1", "2"}, FormulaCase{"A3 - 7", "-2"},
        FormulaCase{"7 - A3", "2"}, FormulaCase{"A3 * A3", "25"}, FormulaCase{"B1 / A3", "2"},
        FormulaCase{"A3 / B1 ", "0"}, FormulaCase{"A3 % 3", "2"}, FormulaCase{"13 % A3", "3"},
        FormulaCase{"A3 ^ 2", "25"}, FormulaCase{"2 ^ A3", "32"}, FormulaCase{"A3 | 2", "7"},
        FormulaCase{"A3 & 4", "4"}, FormulaCase{"A3 ^| 1", "4"}, FormulaCase{"1 ^| A3", "4"},
        FormulaCase{"A3 << 2", "20"}, FormulaCase{"A3 >> 1", "2"}, FormulaCase{"-A3", "-5"},
        FormulaCase{"~A3", "18446744073709551610"}, FormulaCase{"A3 == 5", "true"},
        FormulaCase{"A3 != 5", "false"}, FormulaCase{"A3 < B1", "true"},
        FormulaCase{"A3 <= 5", "true"}, FormulaCase{"B1 > A3", "true"},
        FormulaCase{"4 >= A3", "false"}, FormulaCase{"!A3", "false"}, FormulaCase{"A1:B3 + 1", "2"},
        FormulaCase{"A2 + 1", "1"}, FormulaCase{"1 + A2", "1"}, FormulaCase{"A2", ""},
        FormulaCase{"D1 + A3", "word5"}, FormulaCase{"A3 + 'x'", "5x"}, FormulaCase{"r:5 + 1", "6"},
        FormulaCase{"n:4", "4"}, FormulaCase{"c:3 * r:2", "6"},
        FormulaCase{"var x = A3; x += 1; x * A3", "30"}, FormulaCase{"var x = &A3; x + x", "10"},
        FormulaCase{"(D3.value)(21)", "42"}, FormulaCase{"D1.substr(0, 2)", "wo"},
        FormulaCase{"D1.typeName", "string"}, FormulaCase{"iif(A3, 1, 2)", "1"},
        FormulaCase{"abs(A1 - A3) + abs(A3)", "9"}, FormulaCase{"sqrt(B1) + sqrt(n:9)", "6"},
        FormulaCase{"gcd(A3, B1)", "5"}, FormulaCase{"int(A3) + int(A2)", "5"}));

INSTANTIATE_TEST_SUITE_P(
    Elements, Formula,
    ::testing::Values(FormulaCase{"A1:B3(2, 0)", "5"}, FormulaCase{"A1:B3(0, 1)", "10"},
                      FormulaCase{"A1:B3(1, 0)", ""}, FormulaCase{"A1:B3(r:2, c:0)", "5"},
                      FormulaCase{"A1:B3(c:0, r:2)", "5"}, FormulaCase{"A1:B3(1, r:0)", "10"},
                      FormulaCase{"A1:B3(c:1, 0)", "10"}, FormulaCase{"A1:B3(0, c:1)", "10"},
                      FormulaCase{"A1:B3(r:0, 1)", "10"}, FormulaCase{"A1:B3(n:0, 1)", "10"},
                      FormulaCase{"A1:B3(3, 0)", "refError:range is invalied"},
                      FormulaCase{"A1:B3(0, 2)", "refError:range is invalied"},
                      FormulaCase{"A1:B3(0 - 1, 0)", "refError:range is invalied"},
                      FormulaCase{"A1:B3(1)", "valueError: here should 2 args"},
                      FormulaCase{"A1:B3()", "valueError: here should 2 args"},
                      FormulaCase{"r:5(0, 0)", "refError:range is invalied"}));

INSTANTIATE_TEST_SUITE_P(
    Members, Formula,
    ::testing::Values(FormulaCase{"A1:B3.name", "A1:B3"}, FormulaCase{"B$3:$A1.name", "$A1:B$3"},
                      FormulaCase{"A3.value", "5"}, FormulaCase{"A1:B3.height", "3"},
                      FormulaCase{"A1:B3.width", "2"}, FormulaCase{"B2:C9.top", "1"},
                      FormulaCase{"B2:C9.left", "1"}, FormulaCase{"B2:C9.bottom", "8"},
                      FormulaCase{"B2:C9.right", "2"}, FormulaCase{"D1.text", "word"},
                      FormulaCase{"D1.code", "'word'"}, FormulaCase{"A2.text", ""},
                      FormulaCase{"A2.code", ""}, FormulaCase{"A2.anything", ""},
                      FormulaCase{"r:5.value", "5"}, FormulaCase{"r:5.name", "r:5"},
                      FormulaCase{"r:5.text", ""}, FormulaCase{"r:5.code", ""}));

INSTANTIATE_TEST_SUITE_P(
    TotalsAndCounts, Formula,
    ::testing::Values(
        FormulaCase{"sum(A1:A3)", "6"}, FormulaCase{"sum(A1:B3)", "16"}, FormulaCase{"sum()", "0"},
        FormulaCase{"sum(A1, 4, A3)", "10"}, FormulaCase{"sum(A2:A3)", "refError:args[0] is null"},
        FormulaCase{"sum(1, A2)", "refError:args[1] is null"},
        FormulaCase{"sum(E9)", "refError:args[0] is null"}, FormulaCase{"avg(A1:A3)", "3"},
        FormulaCase{"avg(1, A1:A3, 5)", "3"}, FormulaCase{"avg()", "0"},
        FormulaCase{"avg(5, A2)", "refError:args[1] is null"}, FormulaCase{"count(A1:B3, 5)", "4"},
        FormulaCase{"count()", "0"}, FormulaCase{"count(A2)", "refError:args[0] is null"},
        FormulaCase{"sum(r:4, c:5, n:6)", "15"}, FormulaCase{"avg(r:4, 6)", "5"},
        FormulaCase{"count(r:0, n:0)", "2"}, FormulaCase{"sum('a', 'b')", "0ab"},
        FormulaCase{"Sum(A1:A3)", "6"}));

INSTANTIATE_TEST_SUITE_P(
    BestAndFold, Formula,
    ::testing::Values(
        FormulaCase{"max(1, 3, 2)", "3"}, FormulaCase{"min(1, 3, 2)", "1"},
        FormulaCase{"max()", "0"}, FormulaCase{"min()", "0"}, FormulaCase{"max(A1:B3)", "10"},
        FormulaCase{"min(A2:B3)", "5"}, FormulaCase{"min(A1:B3, 0)", "0"},
        FormulaCase{"max(A1:A3, 7)", "7"}, FormulaCase{"max(n:9, A1:A3)", "9"},
        FormulaCase{"max(A2)", ""}, FormulaCase{"sigma(1, 4, [i] { i * i })", "30"},
        FormulaCase{"pai(1, 5, [i] { i })", "120"}, FormulaCase{"sigma(3, 1, [i] { i })", "0"},
        FormulaCase{"pai(3, 1, [i] { i })", "1"}, FormulaCase{"sigma(1, 3, 7)", "0"},
        FormulaCase{"pai(1, 3)", "0"}, FormulaCase{"sigma(A1, A3, [i] { i })", "15"},
        FormulaCase{"pai(1, 3, [i] { A3 })", "125"},
        FormulaCase{"sigma(9223372036854775806, 9223372036854775807, [i] { 1 })", "2"}));

INSTANTIATE_TEST_SUITE_P(Errors, Formula,
                         ::testing::Values(FormulaCase{"D2 == D2", "true"},
                                           FormulaCase{"D2 == 1", "false"},
                                           FormulaCase{"1 == D2", "false"},
                                           FormulaCase{"D2 < E9(5, 5)", "true"},
                                           FormulaCase{"D2 == D2.value", "true"},
                                           FormulaCase{"D2.value == D2", "true"}));

TEST(Totals, AreExactWhereverTheLimbsEnd)
{
    const std::vector<const char*> texts = {"9223372036854775807",
                                            "1",
                                            "-9223372036854775807",
                                            "-9223372036854775809",
                                            "18446744073709551615",
                                            "2 ** 200",
                                            "-18446744073709551616",
                                            "-(2 ** 200)",
                                            "5",
                                            "'x'",
                                            "7",
                                            "8"};
    FilledSheet sheet;
    HugeVariant plain(0);
    for (size_t i = 0; i < texts.size(); ++i) {
        const std::string row = std::to_string(i + 1);
        sheet.set("H" + row, texts[i]);
        plain += sheet.cell("H" + row)->value();
        sheet.set("I" + row, ("sum(H1:H" + row + ")").c_str());
        const HugeVariant& sum = sheet.cell("I" + row)->value();
        EXPECT_EQ(sum.toString(), plain.toString()) << row;
        EXPECT_EQ(sum.data(), plain.data()) << row; // the limbs too
    }
    EXPECT_EQ(sheet.value("I2"), "9223372036854775808");
    EXPECT_EQ(sheet.value("I9"), "-9223372036854775804");
    EXPECT_EQ(sheet.value("I12"), "-9223372036854775804x78");
}

TEST(ErrorsAmongCells, ReachEveryCellThatCalculatesWithThem)
{
    FilledSheet sheet;
    EXPECT_NE(sheet.result("D2 + 1").find("ECellVarErrorType is not suport add(+)"),
              std::string::npos);
    EXPECT_NE(sheet.result("sum(D1:D3)").find("is not suport add(+)"), std::string::npos);
}

TEST(DeletedReference, IsAnErrorValueAndReadsSo)
{
    FilledSheet sheet;
    for (const auto& [formula, result] :
         std::vector<FormulaCase>{{"A1 + 0", "add"},
                                  {"A1", "refError:range is invalid"},
                                  {"r:5", "valueError: range is invalid"}}) {
        sheet.set("F5", formula);
        XCell* cell = sheet.cell("F5");
        sheet.table.unlinkCell(cell);
        (*cell->ranges())[0].setDeleted(true);
        cell->calc_();
        EXPECT_NE(cell->valueText().find(result), std::string::npos) << cell->valueText();
        EXPECT_EQ(cell->text(true).find("#REF#"), 0u);
    }
}

TEST(RangeValue, KnowsWhatItIs)
{
    FilledSheet sheet;
    sheet.set("F5", "A3");
    const HugeVariant range = HugeVariant::make<XCellVarRange>(&(*sheet.cell("F5")->ranges())[0]);
    EXPECT_EQ(range.typeId(), 10);
    EXPECT_EQ(range.typeName(), "XCellRange*");
    EXPECT_TRUE(range.isRange());
    EXPECT_EQ(range.toString(), "5");
    EXPECT_EQ(range.asInt64(), 5);
    EXPECT_EQ(range.data(), HugeVariant(5).data());
    const HugeVariant copy = range;
    EXPECT_EQ(XCellVarRange::from(copy)->range(), XCellVarRange::from(range)->range());
}

TEST(CellRange, KnowsTheStoredCellsOfItsRectangle)
{
    FilledSheet sheet;
    sheet.set("F5", "A1:B3 + r:5");
    const XCellRanges& ranges = *sheet.cell("F5")->ranges();
    EXPECT_EQ(ranges[0].firstCell(), sheet.cell("A1"));
    EXPECT_EQ(ranges[0].lastCell(), nullptr);
    EXPECT_EQ(ranges[0].cells(),
              (std::vector<XCell*>{sheet.cell("A1"), sheet.cell("B1"), sheet.cell("A3")}));
    EXPECT_EQ(ranges[1].firstCell(), nullptr);
    EXPECT_TRUE(ranges[1].cells().empty());
}

TEST(RangeValue, BecomesInvalidWithItsReference)
{
    FilledSheet sheet;
    sheet.set("F5", "A3 + A1");
    XCell* cell = sheet.cell("F5");
    HugeVariant first = HugeVariant::make<XCellVarRange>(&(*cell->ranges())[0]);
    HugeVariant middle = first;
    HugeVariant last = first;
    middle = HugeVariant();
    const HugeVariant other = HugeVariant::make<XCellVarRange>(&(*cell->ranges())[1]);
    sheet.set("F5", "");
    for (const HugeVariant& gone : {first, last, other}) {
        EXPECT_TRUE(gone.isNull());
        EXPECT_EQ(gone.object()->toString(), "null");
        EXPECT_EQ(gone.object()->fmt(XFormatRule()), "null");
        EXPECT_EQ(gone.exec(nullptr, 0).toString(), "refError:range is invalied");
        EXPECT_EQ(gone.asInt64(), 0);
        EXPECT_TRUE(gone.data().empty());
        EXPECT_EQ(gone.object()->add(gone, HugeVariant(1)).object(), nullptr);
        EXPECT_FALSE(gone.object()->equ(gone, gone));
    }
}

TEST(RangeValue, InAGlobalVariableDoesNotOutliveItsCellsContent)
{
    FilledSheet sheet;
    XScriptEnv_base globals;
    globals.setVar("kept", HugeVariant());
    sheet.set("F5", "kept = A3; A1");
    EXPECT_EQ(globals.getVar("kept").toString(), "5");
    sheet.set("F5", "1");
    EXPECT_EQ(globals.getVar("kept").object()->toString(), "null");
    globals.removeVar("kept");
}

TEST(StoredResult, HoldsNoRangeNotEvenInsideClosures)
{
    FilledSheet sheet;
    sheet.set("F1", "A3");
    EXPECT_FALSE(sheet.cell("F1")->value().isRange());
    sheet.set("F2", "var r = A3; var f = [x] { r + x }; [x] { f(x) + 1 }");
    HugeVariant stored = sheet.cell("F2")->value();
    ASSERT_TRUE(stored.isClosure());
    auto& outer = static_cast<XVarClosure*>(stored.object())->closureVars();
    ASSERT_EQ(outer.size(), 1u);
    auto& inner = static_cast<XVarClosure*>(outer[0].object())->closureVars();
    ASSERT_EQ(inner.size(), 1u);
    EXPECT_FALSE(inner[0].isRange());
    EXPECT_EQ(inner[0].toString(), "5");
    EXPECT_EQ(sheet.result("(F2.value)(10)"), "16");
}

TEST(Closure, OfACellThatIsGoneFindsNoReferences)
{
    HugeVariant closure;
    {
        FilledSheet sheet;
        sheet.set("F1", "[x] { A3 + x }");
        closure = sheet.cell("F1")->value();
        HugeVariant argument(2);
        EXPECT_EQ(closure.exec(&argument, 1).toString(), "7");
    }
    HugeVariant argument(2);
    try {
        closure.exec(&argument, 1);
        FAIL() << "a result without its reference";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(), "ECellVarErrorType is not suport add(+)");
    }
}

} // namespace

} // namespace huge
