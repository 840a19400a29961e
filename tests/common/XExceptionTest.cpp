#include "common/XException.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

using namespace xstd;

namespace {

XExceptionItem itemWith(const char* type, const char* mess)
{
    return XExceptionItem(X_HERE, type).setMess(mess);
}

} // namespace

TEST(ExceptValue, Converts)
{
    EXPECT_TRUE(XExceptValue().isEmpty());
    EXPECT_EQ(XExceptValue().asString(), "");
    EXPECT_EQ(XExceptValue().asInt64(), 0);
    EXPECT_EQ(XExceptValue(int64_t(-7)).asString(), "-7");
    EXPECT_EQ(XExceptValue(int64_t(-7)).asDouble(), -7.0);
    EXPECT_EQ(XExceptValue(1.5).asString(), "1.500000");
    EXPECT_EQ(XExceptValue(-1.9).asInt64(), -1);
    EXPECT_EQ(XExceptValue(1e300).asInt64(), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(XExceptValue(XString("42x")).asInt64(), 42);
    EXPECT_EQ(XExceptValue(XString("2.5")).asDouble(), 2.5);
    EXPECT_TRUE(XExceptValue(XString()).isString());
}

TEST(ExceptionItem, ShowsWhatItHas)
{
    EXPECT_EQ(XExceptionItem().toString(), "");
    const XExceptionItem item = itemWith("compile", "wrong")
                                    .setDetail("why")
                                    .setExtend("pos", 3)
                                    .setExtend("value", 1.5)
                                    .setExtend("token", "x")
                                    .setExtend("size", size_t(9))
                                    .setExtend("count", 7U);
    EXPECT_EQ(item.toString(), "mess: wrong\ntype: compile\ndetail: why\n"
                               "extend{pos:3,value:1.500000,token:x,size:9,count:7}");
    EXPECT_EQ(XExceptionItem(X_HERE, std::runtime_error("plain")).toString(),
              "mess: plain\ntype: exception");
}

TEST(ExceptionItem, KeepsOneValueAtTheFirstPlaceOfAKey)
{
    XExceptionItem item;
    item.setExtend("a", 1).setExtend("b", 2).setExtend("a", "new");
    EXPECT_EQ(item.toString(), "extend{a:new,b:2}");
    EXPECT_EQ(item.extendList().size(), 2U);
    EXPECT_TRUE(item.extendIsString("a"));
    EXPECT_TRUE(item.extendIsInt("b"));
    EXPECT_FALSE(item.extendIsDouble("c"));
    EXPECT_FALSE(item.hasExtend("c"));
    EXPECT_EQ(item.extend("c").asString(), "");
    EXPECT_EQ(item.extendInt("b"), 2);
}

TEST(ExceptionChain, ReadsFromTheCauseOutward)
{
    XExceptionItems chain;
    chain.add(itemWith("inner", "").setExtend("key", 1));
    EXPECT_STREQ(chain.what(), "type: inner\nextend{key:1}");
    chain.add(itemWith("outer", "told").setExtend("key", 2));
    EXPECT_STREQ(chain.what(),
                 "type: inner\nextend{key:1}\nmess: told\ntype: outer\nextend{key:2}");
    EXPECT_EQ(chain.toString(), chain.what());
    EXPECT_EQ(chain.mess(), "told");
    EXPECT_TRUE(chain.has("key"));
    EXPECT_FALSE(chain.has("outer", "other"));
    EXPECT_EQ(chain.extendInt("key"), 1);
    EXPECT_EQ(chain.extendInt("outer", "key"), 2);
    EXPECT_EQ(chain.extendText("nobody", "key"), "");
    EXPECT_EQ(chain.extendDouble("outer", "key"), 2.0);
}

TEST(ExceptionChain, StaysBounded)
{
    XExceptionItems chain;
    for (int i = 0; i < 10000; ++i)
        chain.add(itemWith("reader", chain.what()));
    EXPECT_EQ(chain.items().size(), XExceptionItems::maxItems);
    EXPECT_LE(std::string(chain.what()).size(), XExceptionItems::maxText + 3);

    // Three bytes a character from byte 6 on: the limit falls into the middle of one.
    XString wide;
    for (int i = 0; i < 30000; ++i)
        wide += "\xE6\x95\xB0";
    const XString text = XExceptionItems().add(itemWith("x", wide.c_str())).what();
    EXPECT_TRUE(text.isUtf8());
    EXPECT_EQ(text.right(4), "\xB0...");
}

TEST(ExceptionHtml, Styles)
{
    XTextStyle style;
    style.family = "Arial";
    style.red = 0xFF;
    style.blue = 0x80;
    style.size = 14;
    EXPECT_EQ(style.css(), "font-family:'Arial';color:#FF0080;font-size:14px;font-weight: lighter;"
                           "font-style:normal;text-decoration:normal;");
    style.family = "";
    style.bold = style.italic = style.underline = true;
    EXPECT_EQ(styledSpan("<b>", style),
              "<span style=\"color:#FF0080;font-size:14px;font-weight: bold;font-style:italic;"
              "text-decoration:underline;\"><b></span>");
}

namespace {

std::string span(const std::string& color, int size, bool bold, const std::string& text)
{
    return "<span style=\"color:#" + color + ";font-size:" + std::to_string(size) +
           "px;font-weight: " + (bold ? "bold" : "lighter") +
           ";font-style:normal;text-decoration:normal;\">" + text + "</span>";
}

} // namespace

TEST(ExceptionHtml, OfAnItemAndAChain)
{
    const XSourceLocation place{"src/a.cpp", 12, "void f()"};
    EXPECT_EQ(place.toString(), "file: src/a.cpp\nline: 12\nfuncName: void f()");
    const std::string placeHtml =
        "<span>" + span("A0A0A0", 12, false, "file: ") + span("000080", 12, false, "src/a.cpp") +
        span("A0A0A0", 12, false, "(line: ") + span("000080", 12, false, "12") +
        span("A0A0A0", 12, false, ")") + span("A0A0A0", 12, false, ", func: ") +
        span("000080", 12, false, "void f()") + "</span>";
    EXPECT_EQ(place.toHtml(), placeHtml);

    XExceptionItem item(place, "compile");
    item.setMess("a <b>").setDetail("why").setExtend("x", 1).setExtend("y", 2);
    const std::string html =
        "<table><tr style=\"padding:0px;line-height:125%;border-width:0px;\"></div>"
        "<td "
        "style=\"padding:0px;background-color:red;color:red;border-width:0px;width:5px;\">-</td>"
        "<td style=\"padding:5px;line-height:125%;border-width:0px;\">" +
        span("FF0000", 16, true, "a &lt;b&gt;") +
        "<hr style=\"height:1px;border:none;border-top:1px dotted #d0d0d0;\"/>"
        "<div style=\"margin-left:2em;line-height:150%;background-color:transparent;\">" +
        span("646464", 14, false, "type:") + span("FF0000", 14, true, "compile") + "<br>" +
        span("646464", 14, false, "detail:") + span("FF0000", 14, true, "why") + "<br>" +
        span("646464", 16, false, "progInfo: {") + placeHtml + span("646464", 16, false, "}") +
        "<br>" + span("646464", 16, false, "extend Info{") + span("646464", 14, false, "x:") +
        span("FF0080", 14, false, "1") + span("646464", 14, false, ", ") +
        span("646464", 14, false, "y:") + span("FF0080", 14, false, "2") +
        span("646464", 16, false, "}") + "</td></tr></table>";
    EXPECT_EQ(item.toHtml(), html);
    EXPECT_EQ(XExceptionItems().add(item).toHtml(),
              "<table><tr><td style=\"padding:0px;line-height:125%;border:#d0d0d0;"
              "border-style:solid;border-width:1px;\">" +
                  html + "</td></tr></table>");
}
