#include "cell/XCellVarError.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace huge {

namespace {

HugeVariant error(int type, const char* message = "")
{
    return HugeVariant::make<XCellVarError>(static_cast<ECellVarErrorType>(type), message);
}

template <class F>
std::string failure(F&& run)
{
    try {
        run();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

TEST(ErrorValue, ReadsAsItsKindAndMessage)
{
    EXPECT_EQ(error(0, "unseen").object()->toString(), "noerror");
    EXPECT_EQ(error(1, "it broke").toString(), "valueError: it broke");
    EXPECT_EQ(error(2, "it is gone").toString(), "refError:it is gone");
    EXPECT_EQ(error(7, "it is odd").toString(), "unknownError: it is odd");
    EXPECT_EQ(error(2, "x").fmt(XFormatRule()), "refError:x");
    EXPECT_EQ(invalidRange().toString(), "refError:range is invalied");
    EXPECT_EQ(HugeVariant(error(1, "x")).toString(), "valueError: x");
}

TEST(ErrorValue, IsNullOnlyWithoutAnError)
{
    EXPECT_TRUE(error(0).isNull());
    EXPECT_FALSE(error(1).isNull());
    EXPECT_FALSE(error(1).isZero());
    EXPECT_EQ(error(2).typeId(), 13);
    EXPECT_EQ(error(2).typeName(), "ECellVarErrorType");
}

TEST(ErrorValue, ComparesByKindAndWithNothingElse)
{
    EXPECT_TRUE(error(1, "a") == error(1, "b"));
    EXPECT_FALSE(error(1) == error(2));
    EXPECT_TRUE(error(1) < error(2));
    EXPECT_TRUE(error(2) > error(1));
    EXPECT_TRUE(error(2) >= error(2));
    EXPECT_TRUE(error(2) <= error(2));
    HugeVariant target = error(1);
    HugeVariant reference;
    reference.setRef(target);
    EXPECT_TRUE(reference == error(1));
    EXPECT_TRUE(error(2) > reference);
    for (const HugeVariant& other : {HugeVariant(1), HugeVariant("x"), HugeVariant()}) {
        EXPECT_FALSE(error(1) == other);
        EXPECT_FALSE(other == error(1));
        EXPECT_FALSE(error(1) > other);
        EXPECT_FALSE(error(1) <= other);
    }
}

TEST(ErrorValue, ConvertsAndCalculatesNothingElse)
{
    EXPECT_EQ(error(2, "x").asType(1).toString(), "true");
    EXPECT_EQ(error(2, "x").asType(2).toString(), "2");
    EXPECT_EQ(error(2, "x").asType(3).toString(), "2");
    EXPECT_EQ(error(2, "x").asType(3).typeName(), "HugeFloat");
    EXPECT_EQ(error(2, "x").asType(7).toString(), "refError:x");
    EXPECT_EQ(failure([] { error(1).asType(8); }), "can't type convert");
    const std::string cannotAdd = "ECellVarErrorType is not suport add(+)";
    EXPECT_EQ(failure([] { error(1) + HugeVariant(1); }), cannotAdd);
    EXPECT_EQ(failure([] { HugeVariant(1) + error(1); }), cannotAdd);
    EXPECT_EQ(failure([] { HugeVariant("x") + error(1); }), cannotAdd);
    EXPECT_EQ(failure([] { -error(1); }), "ECellVarErrorType is not suport neg");
}

} // namespace

} // namespace huge
