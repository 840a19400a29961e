#include "values/HugeVar.h"
#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "values/HugeVarFunc.h"
#include "values/HugeVarRef.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace huge {
namespace {

/// A class of values that can do nothing.
class Idle final : public HugeVar {
public:
    xstd::XString typeName() const override { return "idle"; }
    int typeId() const override { return 12; }
    bool isNull() const override { return false; }
};

xstd::XString failureOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "no failure";
}

TEST(MissingOperations, FailWithTheTypeAndTheOperation)
{
    const HugeVariant idle = HugeVariant::make<Idle>();
    const HugeVar& v = *idle.object();
    const HugeVariant one(1);
    const struct {
        const char* operation;
        std::function<void()> call;
    } rows[] = {
        {"exec()", [&] { v.exec(nullptr, 0); }},
        {"asType()", [&] { v.asType(2); }},
        {"asInt64()", [&] { v.asInt64(); }},
        {"asDouble()", [&] { v.asDouble(); }},
        {"neg", [&] { -idle; }},
        {"shr(>>)", [&] { idle >> one; }},
        {"shl(<<)", [&] { idle << one; }},
        {"add(+)", [&] { one + idle; }},
        {"sub(-)", [&] { one - idle; }},
        {"mul(*)", [&] { idle* one; }},
        {"div(/)", [&] { idle / one; }},
        {"per(%)", [&] { idle % one; }},
        {"pow(^)", [&] { pow(idle, one); }},
        {"bitNot(~)", [&] { ~idle; }},
        {"bitOr(|)", [&] { bitOr(idle, one); }},
        {"bitAnd(&)", [&] { bitAnd(idle, one); }},
        {"bitXor(xor)", [&] { bitXor(idle, one); }},
        {"sin()", [&] { idle.sin(); }},
        {"cos()", [&] { idle.cos(); }},
        {"tan()", [&] { idle.tan(); }},
        {"asin()", [&] { idle.asin(); }},
        {"acos()", [&] { idle.acos(); }},
        {"atan()", [&] { idle.atan(); }},
        {"sinh()", [&] { idle.sinh(); }},
        {"cosh()", [&] { idle.cosh(); }},
        {"tanh()", [&] { idle.tanh(); }},
        {"asinh()", [&] { idle.asinh(); }},
        {"acosh()", [&] { idle.acosh(); }},
        {"atanh()", [&] { idle.atanh(); }},
        {"exp()", [&] { idle.exp(); }},
        {"ln()", [&] { idle.ln(); }},
        {"log(base)", [&] { idle.log(one); }},
        {"equ(==)", [&] { (void)(idle == one); }},
        {"greate(>)", [&] { (void)(one > idle); }},
        {"greate_equ(>=)", [&] { (void)(idle >= one); }},
        {"less(<)", [&] { (void)(idle < one); }},
        {"less_equ(<=)", [&] { (void)(idle <= one); }},
        {"hex()", [&] { idle.hex(0); }},
        {"fmt()", [&] { idle.fmt(defaultFormatRule); }},
        {"toString()", [&] { idle.toString(); }},
        {"foo()", [&] { idle.member("foo", nullptr, 0); }},
        {"sinh()", [&] { idle.member("sinh", nullptr, 0); }},
        {"ln()", [&] { idle.member("log", nullptr, 0); }},
    };
    for (const auto& row : rows)
        EXPECT_EQ(failureOf(row.call), xstd::XString("idle is not suport ") + row.operation);
}

TEST(MissingOperations, OfANullHandleAndOfTheClassesThatHaveFew)
{
    const HugeVariant null;
    EXPECT_EQ(failureOf([&] { null.exec(nullptr, 0); }), "null is not suport exec()");
    EXPECT_EQ(failureOf([&] { null.member("x", nullptr, 0); }), "null is not suport x()");
    EXPECT_EQ(failureOf([] { HugeVariant(true) + HugeVariant(true); }),
              "boolean is not suport add(+)");
    EXPECT_EQ(failureOf([] { (void)(HugeVariant(true) == HugeVariant(true)); }),
              "boolean is not suport equ(==)");
    EXPECT_EQ(failureOf([] { -HugeVariant(""); }), "string is not suport neg");
    EXPECT_EQ(failureOf([] { HugeVariant("a") % HugeVariant(1); }), "string is not suport per(%)");
    EXPECT_EQ(failureOf([] { HugeVariant(5).exec(nullptr, 0); }),
              "HugeInteger is not suport exec()");
}

TEST(TypedAccess, NamesTheTypeThatIsThere)
{
    EXPECT_EQ(failureOf([] { HugeVariant(5).asBool(); }), "HugeInteger is not bool");
    EXPECT_EQ(failureOf([] { HugeVariant("a").asInt(); }), "string is not int");
    EXPECT_EQ(failureOf([] { HugeVariant(true).asStr(); }), "boolean is not string");
    EXPECT_EQ(failureOf([] { HugeVariant(5).asFunc(); }), "HugeInteger is not functional");
    EXPECT_EQ(failureOf([] { HugeVariant(5).asFloat(); }), "HugeInteger is not float");
    EXPECT_EQ(failureOf([] { HugeVariant(1.5).asImag(); }), "HugeFloat is not imag");
    EXPECT_EQ(failureOf([] { HugeVariant(1.5).asMod(); }), "HugeFloat is not mod");
    EXPECT_EQ(failureOf([] { HugeVariant("a").asTime(); }), "string is not time");
    EXPECT_EQ(failureOf([] { HugeVariant().asTime(); }), "null is not time");
    EXPECT_TRUE(HugeVariant().asFloat().isZero());
    EXPECT_TRUE(HugeVariant().asImag().isZero());
    EXPECT_TRUE(HugeVariant().asMod().isZero());
    EXPECT_EQ(failureOf([] { HugeVariant().asBool(); }), "null is not bool");
    EXPECT_EQ(failureOf([] { HugeVariant().asFunc(); }), "null is not functional");
    EXPECT_TRUE(HugeVariant().asInt().isZero());
    EXPECT_EQ(HugeVariant().asStr(), "");
}

TEST(Conversions, GoThroughTheValuesOwn)
{
    EXPECT_EQ(HugeVariant("1'000").toInteger(), HugeInteger(1000));
    EXPECT_EQ(HugeVariant(true).toInteger(), HugeInteger(1));
    EXPECT_TRUE(HugeVariant().toInteger().isZero());
    EXPECT_EQ(HugeVariant("2.5").toFloat(), HugeFloat(2.5));
    EXPECT_EQ(HugeVariant(true).toFloat(), HugeFloat(1));
    EXPECT_EQ(HugeVariant(HugeFunction()).toFloat(), HugeFloat(0));
    EXPECT_EQ(HugeVariant(2).toImag(), HugeImag(HugeFloat(2), HugeFloat(0)));
    EXPECT_EQ(HugeVariant(true).toMod().value(), HugeInteger(1));
    EXPECT_FALSE(HugeVariant(5).toMod().hasModulus());
    EXPECT_EQ(HugeVariant(false).toXString(), "false");
    EXPECT_EQ(HugeVariant(-7).toXString(), "-7");
    EXPECT_EQ(HugeVariant().toXString(), "");
    EXPECT_FALSE(HugeVariant(7).toFunc());
    EXPECT_TRUE(HugeVariant(7).asType(99).isNull());
    EXPECT_EQ(HugeVariant().asInt64(), 0);
    EXPECT_EQ(HugeVariant(true).asDouble(), 1.0);
}

TEST(Nulls, FollowTheRulesOfTheLeftOperand)
{
    const HugeVariant null;
    const HugeVariant five(5);
    EXPECT_EQ((null + five).toString(), "5");
    EXPECT_EQ((null - five).toString(), "-5");
    EXPECT_EQ(bitOr(null, five).toString(), "5");
    EXPECT_EQ(bitXor(null, five).toString(), "5");
    for (const HugeVariant& result : {null * five, null / five, null % five, pow(null, five),
                                      bitAnd(null, five), -null, ~null, null >> five})
        EXPECT_EQ(result.object(), nullptr);
    EXPECT_TRUE(null == HugeVariant(0));
    EXPECT_FALSE(null != HugeVariant(0));
    EXPECT_FALSE(null == five);
    EXPECT_FALSE(null > five);
    EXPECT_FALSE(null < five);
    EXPECT_FALSE(null >= five);
    EXPECT_TRUE(null >= null);
    EXPECT_TRUE(null <= null);
    EXPECT_EQ(null.sin().toString(), "0");
    EXPECT_EQ(null.log(five).toString(), "0");
    EXPECT_EQ((five + null).toString(), "5");
    EXPECT_FALSE(five == null);
    EXPECT_EQ((HugeVariant("") + five).toString(), "5");
    EXPECT_EQ(HugeVariant("").typeId(), 0);
    EXPECT_EQ(HugeVariant("").typeName(), "null");
    EXPECT_EQ(HugeVariant(HugeInteger()).typeId(), 0);
}

TEST(Nulls, HaveTextsOfTheirOwn)
{
    const HugeVariant null;
    EXPECT_EQ(null.toString() + null.fmt(defaultFormatRule) + null.hex(0), "");
    EXPECT_EQ(null.dec(defaultFormatRule), "0");
    EXPECT_EQ(null.bin(defaultFormatRule), "0b0");
    EXPECT_EQ(null.oct(defaultFormatRule), "0");
    EXPECT_EQ(null.hexFmt(defaultFormatRule), "0x0");
}

TEST(Dispatch, GoesToTheHigherTypeCode)
{
    EXPECT_EQ((HugeVariant(true) + HugeVariant(1)).toString(), "2");
    EXPECT_EQ((HugeVariant(1) - HugeVariant(true)).toString(), "0");
    EXPECT_EQ((HugeVariant(5) + HugeVariant("a")).toString(), "5a");
    EXPECT_EQ((HugeVariant("a") + HugeVariant(true)).toString(), "atrue");
    EXPECT_TRUE(HugeVariant("10") < HugeVariant(9)); // as texts
    EXPECT_TRUE(HugeVariant(true) == HugeVariant(1));
    EXPECT_EQ(failureOf([] { bitOr(HugeVariant(true), HugeVariant(1)); }),
              "bitOr(|) only for Integer");
    EXPECT_EQ(failureOf([] { bitAnd(HugeVariant(1), HugeVariant(false)); }),
              "bitAnd(|) only for Integer");
    EXPECT_EQ(failureOf([] { bitXor(HugeVariant(1), HugeVariant()); }),
              "bitXor(|) only for Integer");
}

TEST(Handles, OwnTheirObjectAlone)
{
    HugeVariant a("text");
    HugeVariant b = a;
    b += HugeVariant("!");
    EXPECT_EQ(a.toString(), "text");
    EXPECT_EQ(b.toString(), "text!");
    HugeVariant c = std::move(b);
    EXPECT_EQ(b.object(), nullptr);
    c += c;
    EXPECT_EQ(c.toString(), "text!text!");
    c = std::move(*&c);
    EXPECT_EQ(c.toString(), "text!text!");
    HugeVariant n(3);
    n += n;
    n -= HugeVariant(10);
    n *= n;
    n ^= HugeVariant(2);
    n %= HugeVariant(100);
    n /= HugeVariant(5);
    EXPECT_EQ(n.toString(), "11"); // 6, -4, 16, 256, 56, 11
    HugeVariant nothing;
    nothing >>= HugeVariant(1);
    EXPECT_EQ(nothing.object(), nullptr);
}

TEST(References, PassEverythingOnToTheirTarget)
{
    HugeVariant value(41);
    HugeVariant ref;
    ref.setRef(value);
    HugeVariant second;
    second.setRef(ref);
    EXPECT_EQ(second.refTarget(), &value);
    second = HugeVariant(42);
    EXPECT_EQ(value.toString(), "42");
    EXPECT_TRUE(ref.isRef());
    ref += HugeVariant(1);
    EXPECT_EQ(value.toString(), "43");
    EXPECT_EQ((ref + second).toString(), "86");
    EXPECT_EQ((-ref).toString(), "-43");
    EXPECT_EQ(ref.typeId(), 2);
    EXPECT_EQ(ref.typeName(), "HugeInteger");
    EXPECT_EQ(HugeVariant(ref).isRef(), false);
    EXPECT_EQ(ref.member("value", nullptr, 0).toString(), "43");
    EXPECT_EQ(ref.member("abs", nullptr, 0).toString(), "43");
    EXPECT_EQ(ref.object()->add(ref, HugeVariant(1)).toString(), "44");
    EXPECT_EQ(failureOf([&] { ref.object()->sin(); }), "HugeInteger is not suport sin()");
    EXPECT_EQ(failureOf([&] { ref.object()->hex(0); }), "HugeInteger is not suport hex()");
    ref.clear_();
    EXPECT_EQ(value.toString(), "43");
    value = HugeMod(HugeInteger(10), HugeInteger(7));
    ref.setRef(value);
    EXPECT_EQ(ref.member("value", nullptr, 0).typeName(), "HugeInteger");
    EXPECT_EQ(ref.object()->data().size(), 16u);
}

TEST(References, NeverCloseARing)
{
    HugeVariant a(1);
    HugeVariant b;
    b.setRef(a);
    a.setRef(b);
    EXPECT_FALSE(a.isRef());
    a.setRef(a);
    EXPECT_EQ(b.toString(), "1");
}

TEST(Functions, CallAndCompareByTheirTypes)
{
    const auto makeAdder = [] {
        return [](HugeVariant* args, int argc) {
            return argc == 0 ? HugeVariant(0) : args[0] + HugeVariant(1);
        };
    };
    const HugeVariant f{HugeFunction(makeAdder())};
    HugeVariant arg(4);
    EXPECT_EQ(f.exec(&arg, 1).toString(), "5");
    EXPECT_EQ(f.toString(), "HugeVariant func(HugeVariant* _args, int _argc)");
    EXPECT_EQ(f.fmt(defaultFormatRule), f.toString());
    EXPECT_EQ(f.typeName(), "functinal: HugeVariant(HugeVariant* _args, int argc)");
    EXPECT_TRUE(f == HugeVariant(HugeFunction(makeAdder())));
    EXPECT_FALSE(f == HugeVariant(HugeFunction([](HugeVariant*, int) { return HugeVariant(); })));
    EXPECT_FALSE(f == HugeVariant(5));
    EXPECT_EQ(f.toFunc()(&arg, 1).toString(), "5");
    const HugeVariant empty{HugeFunction()};
    EXPECT_TRUE(empty.isNull());
    EXPECT_EQ(empty.exec(nullptr, 0).object(), nullptr);
}

TEST(Functions, MayReplaceTheValueThatHoldsThem)
{
    HugeVariant slot;
    const xstd::XString captured = "kept for the time of the call";
    slot = HugeFunction([&slot, captured](HugeVariant*, int) {
        slot = HugeVariant(1);
        return HugeVariant(captured);
    });
    EXPECT_EQ(slot.exec(nullptr, 0).toString(), captured);
    EXPECT_EQ(slot.toString(), "1");
}

} // namespace
} // namespace huge
