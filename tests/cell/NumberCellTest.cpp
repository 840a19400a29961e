#include "Sheet.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace huge {

namespace {

struct CellCase {
    const char* formula;
    const char* shown;
};

// One cell of every kind of number, and what can be made of it.
class NumberSheet : public Sheet {
public:
    NumberSheet()
    {
        set("A1", "1.5");
        set("A2", "2i");
        set("A3", "%(7) 5");
        set("A4", "time(2026, 2, 3, 4, 5, 6)");
        set("A5", "decbase64('AAEC')");
        set("A6", "4");
    }
};

TEST(Numbers, StandInCellsAndAreReadByOthers)
{
    NumberSheet sheet;
    const std::vector<CellCase> cases = {
        {"A1", "1.5"},
        {"A1 + 1", "2.5"},
        {"1 / A6 + A1", "1.5"},
        {"1.0 / A6", "0.25"},
        {"A2 * A2", "-4"},
        {"A1 + A2", "1.5 + 2i"},
        {"A3 + 4", "2"},
        {"A6 - A3", "6"},
        {"A3.mod", "7"},
        {"A4.hour", "4"},
        {"A4 < time()", "true"},
        {"A5", "0x000102"},
        {"hash256(A5) == hash256(decbase64('AAEC'))", "true"},
        {"base64(A5)", "AAEC"},
        {"base64('a') == base64('b')", "false"},
        {"abs(A2 - A1)", "2.5"},
        {"abs(A2)", "2"},
        {"sqrt(A6)", "2"},
        {"sqrt(-A6)", "2i"},
        {"sqrt(A3 - 3) ** 2", "2"},
        {"ln(A2) == ln(2i)", "true"},
        {"ln(A6) == ln(4.0)", "true"},
        {"log(2, A6)", "2"},
        {"float(A6) / 8", "0.5"},
        {"int(A1)", "1"},
        {"imag(A6, A1)", "4 + 1.5i"},
        {"mod(A6, 3)", "1"},
        {"%(A6 + 1) 7", "2"},
        {"pi(A6) == pi(4)", "true"},
        {"sum(A1, A6)", "5.5"},
        {"sum(A1:A2)", "1.5 + 2i"},
        {"avg(A1, 2.5)", "2"},
        {"avg(A6, A6 + 1)", "4"},
        {"avg(A6, A6 + 1.0)", "4.5"},
        {"max(A1, A6)", "4"},
        {"min(A1, A6)", "1.5"},
        {"sigma(1, 3, [n] { n * A1 })", "9"},
        {"pai(1, 3, [n] { A2 })", "-8i"},
        {"mod(A6)", "valueError: mess: mod(value,modeleter) function need two args! "},
        {"A1 / 0", "valueError: mess: div by zero"},
        {"asin(A6)", "valueError: mess: arcsin(x) only valid for -1<=x<=1"},
        {"pi(10 ** 9)", "valueError: mess: Number size must less than 20800"},
    };
    for (const CellCase& row : cases) {
        sheet.refused("F5", row.formula); // a formula that fails is in its cell nevertheless
        const std::string shown = sheet.value("F5");
        EXPECT_EQ(shown.substr(0, shown.find('\n')), row.shown) << row.formula;
    }
}

TEST(Numbers, ChangeTheirReaders)
{
    Sheet sheet;
    sheet.set("A1", "2");
    sheet.set("B1", "A1 / 4");
    sheet.set("B2", "sqrt(A1)");
    sheet.set("C1", "B1 * 2 + B2");
    EXPECT_EQ(sheet.value("C1"), "1");
    sheet.set("A1", "2.25");
    EXPECT_EQ(sheet.value("B1"), "0.5625");
    EXPECT_EQ(sheet.value("C1"), "2.625");
    sheet.set("A1", "-4");
    EXPECT_EQ(sheet.value("C1"), "-2 + 2i");
    sheet.set("A1", "mod(2, 7)");
    EXPECT_EQ(sheet.value("B1"), "4");
    sheet.actions.undo_();
    EXPECT_EQ(sheet.value("C1"), "-2 + 2i");
}

// As a number is whose digits pass the limit.
class Textless final : public HugeVar {
public:
    bool isNull() const override { return false; }
    xstd::XString fmt(const XFormatRule&) const override
    {
        throw std::runtime_error("Number size must less than 20800");
    }
};

TEST(Values, WithoutATextShowWhy)
{
    Sheet sheet;
    sheet.force("A1")->setValue(HugeVariant::make<Textless>());
    EXPECT_EQ(sheet.value("A1"), "valueError: Number size must less than 20800");
}

} // namespace

} // namespace huge
