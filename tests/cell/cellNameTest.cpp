#include "cell/cellName.h"

#include <gtest/gtest.h>

TEST(CellName, LettersAreBijectiveBase26)
{
    struct Row {
        int32_t col;
        const char* text;
    };
    for (const Row& row : {Row{0, "A"}, Row{25, "Z"}, Row{26, "AA"}, Row{51, "AZ"}, Row{52, "BA"},
                           Row{701, "ZZ"}, Row{702, "AAA"}, Row{32766, "AVLG"}})
        EXPECT_EQ(huge::columnText(row.col), row.text);
    EXPECT_EQ(huge::cellName(0, 27), "AB1");
    EXPECT_EQ(huge::cellName(1048575, 0), "A1048576");
}
