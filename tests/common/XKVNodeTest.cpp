#include "common/XKVNode.h"
#include "common/XIniDecoder.h"
#include "common/XJsonDecoder.h"

#include <gtest/gtest.h>

#include <limits>

using namespace xstd;

namespace {

XJson json(const XString& text)
{
    return XJsonDecoder().parse(text);
}

template <class Work>
std::string failureOf(Work work)
{
    try {
        work();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    } catch (const XExceptionItems& chain) {
        return chain.what();
    }
    return {};
}

struct TextCase {
    const char* text;
    const char* expected;
};

} // namespace

class JsonText : public ::testing::TestWithParam<TextCase> {};

TEST_P(JsonText, IsReadAndComesBack)
{
    const XString line = json(GetParam().text).toJson();
    EXPECT_EQ(line, GetParam().expected);
    EXPECT_EQ(json(line).toJson(), line);
    EXPECT_EQ(json(json(line).toJson(0, 3)).toJson(), line);
}

INSTANTIATE_TEST_SUITE_P(Containers, JsonText,
                         ::testing::ValuesIn(std::vector<TextCase>{
                             {"{b: 1, \"a\": 2,}", "{a: 2, b: 1}"},
                             {"{a: 1, a: [true, null,]}", "{a: [true, null]}"},
                             {"[[], {}, [{x: false}]]", "[[], {}, [{x: false}]]"},
                             {"{a: 1,", "{a: 1}"},
                             {"{\"9\": {}, \"\": []}", "{\"\": [], \"9\": {}}"}}));
INSTANTIATE_TEST_SUITE_P(Numbers, JsonText,
                         ::testing::ValuesIn(std::vector<TextCase>{
                             {"-5", "-5"},
                             {"0x10", "16"},
                             {"-9223372036854775808", "-9223372036854775808"},
                             {"1e3", "1000"},
                             {"0.1", "0.1"},
                             {"2.50", "2.5"},
                             {"-3.0", "-3.0"},
                             {"0x1.8", "1.5"},
                             {"1.0e20", "100000000000000000000.0"}}));
INSTANTIATE_TEST_SUITE_P(Texts, JsonText,
                         ::testing::ValuesIn(std::vector<TextCase>{
                             {"'its' 'own'", "\"itsown\""},
                             {"{'two words': \"a\\\"\\n\\\\\"}",
                              "{\"two words\": \"a\\\"\\n\\\\\"}"},
                             {"{\"键\": \"值\"}", "{\"键\": \"值\"}"}}));

TEST(JsonWriter, KeepsControlBytes)
{
    XKVNode node;
    const XString bytes(std::string({'a', '\0', '\1', '\37', '7', '\n'}));
    node[bytes] = bytes;
    EXPECT_EQ(node.toJson(), "{\"a\\x00\\x01\\x1F7\\n\": \"a\\x00\\x01\\x1F7\\n\"}");
    const XJson back = json(node.toJson());
    ASSERT_EQ(back.entries().count(bytes), 1u);
    EXPECT_EQ(back.entries().at(bytes).toText(), bytes);
}

TEST(JsonReader, NamesWhatIsWrongAndWhere)
{
    for (const TextCase& row : std::vector<TextCase>{
             {"", "row: 1, col: 0: JSON can only be one of single value, array or object"},
             {"name", "row: 1, col: 0: JSON can only be one of single value, array or object"},
             {"[1 2]", "row: 1, col: 3: Data can only be separated by commas"},
             {"{a: 1", "row: 1, col: 5: Data can only be separated by commas"},
             {"{\n 1: 2}", "row: 2, col: 1: Missing field name"},
             {"{a 1}", "row: 1, col: 3: This is supposed to be a colon: "},
             {"{a: b}", "row: 1, col: 4: There's an unknown value(b) here"},
             {"[2i]", "row: 1, col: 1: There's an unknown value(2i) here"},
             {"9223372036854775808", "row: 1, col: 19: The integer is out of range"},
             {"1.0e309", "row: 1, col: 7: The number is out of range"}})
        EXPECT_EQ(failureOf([&] { json(row.text); }), row.expected) << row.text;
    EXPECT_NE(failureOf([] { json("+5"); }).find("Here could be a number"), std::string::npos);
    EXPECT_NE(failureOf([] { json("'open"); }).find("Closing quote not found for string"),
              std::string::npos);
    EXPECT_NE(failureOf([] { json(XString(100000, '[')); }).find("nested too deep"),
              std::string::npos);
    EXPECT_EQ(json(XString(400, '[') + XString(400, ']')).size(), 1u);
}

TEST(JsonWriter, PutsEachChildOnALineOfItsOwn)
{
    EXPECT_EQ(json("{b: [1, 2], a: {}}").toJson(0, 2),
              "{\n  a: {\n  }, \n  b: [\n    1, \n    2\n  ]\n}");
    XKVNode node;
    node = std::numeric_limits<double>::infinity();
    EXPECT_THROW(node.toJson(), std::runtime_error);
}

TEST(Tree, IsWalkedAndMadeByPaths)
{
    XKVNode root;
    *root.at("a.b[2].c", true) = 7;
    EXPECT_EQ(root.toJson(), "{a: {b: [null, null, {c: 7}]}}");
    const XKVNode* leaf = root.at("a.b[2].c");
    ASSERT_NE(leaf, nullptr);
    EXPECT_EQ(leaf->path(), "a.b[2].c");
    EXPECT_EQ(leaf->index(), 0);
    EXPECT_EQ(leaf->parent()->key(), "[2]");
    for (const char* missing :
         {"a.x", "a[0]", "a.b.c", "a.b[3]", "a.b[x]", "a.b[-1]", "[0", "a.b[2].c.d"})
        EXPECT_EQ(root.at(missing), nullptr) << missing;
    EXPECT_EQ(root.at("a.b[99999999999]", true), nullptr);
    EXPECT_EQ(root.at(""), &root);
}

TEST(Tree, KeepsItsWaysUpWhenItIsCopiedAndMoved)
{
    XKVNode root = json("{list: [{x: 1}]}");
    XKVNode copy = root;
    XKVNode moved = std::move(root);
    for (int i = 0; i < 40; ++i)
        moved["list"].at(int64_t(moved["list"].size())) = i; // grows, so its elements move
    EXPECT_EQ(moved.at("list[0].x")->path(), "list[0].x");
    EXPECT_EQ(copy.at("list[0].x")->path(), "list[0].x");
    EXPECT_EQ(moved.at("list[40]")->asInt64(), 39);
    XKVNode& list = copy["list"];
    list = XKVNode(list.at(0)); // a child takes the place of its parent
    EXPECT_EQ(copy.toJson(), "{list: {x: 1}}");
    EXPECT_EQ(copy.at("list.x")->path(), "list.x");
}

TEST(Tree, ReachesElementsByIndex)
{
    XKVNode array(XKVNode::typeArray);
    EXPECT_EQ(failureOf([&] { array.at(1); }), "index is out bound!");
    EXPECT_EQ(failureOf([&] { array.at(-1); }), "index is out bound!");
    EXPECT_EQ(failureOf([&] { std::as_const(array).at(0); }), "index is out bound!");
    array.at(0) = "first";
    EXPECT_EQ(array.toJson(), "[\"first\"]");
    XKVNode object = json("{a: 1}");
    object.at(5) = 3; // an object has no places: what is written here is dropped
    EXPECT_EQ(object.toJson(), "{a: 1}");
    EXPECT_TRUE(object.at(0).isNull());
    EXPECT_EQ(object["a"].at(9).asInt64(), 1);
    EXPECT_THROW(object["a"]["b"], std::runtime_error);
}

TEST(Tree, ConvertsSingleValues)
{
    struct Case {
        const char* text;
        bool truth;
        int64_t integer;
        double real;
        const char* shown;
    };
    for (const Case& row :
         std::vector<Case>{{"null", false, 0, 0, ""},
                           {"true", true, 1, 1, ""},
                           {"-7", true, -7, -7, "-7"},
                           {"0.5", true, 0, 0.5, "0.5"},
                           {"1.0e30", true, INT64_MAX, 1e30, "1000000000000000019884624838656.0"},
                           {"'12.75x'", true, 12, 12.75, "12.75x"},
                           {"'0x1F'", true, 31, 31, "0x1F"},
                           {"''", false, 0, 0, ""},
                           {"[0]", true, 0, 0, ""}}) {
        const XJson node = json(row.text);
        EXPECT_EQ(node.asBool(), row.truth) << row.text;
        EXPECT_EQ(node.asInt64(), row.integer) << row.text;
        EXPECT_EQ(node.asDouble(), row.real) << row.text;
        EXPECT_EQ(node.toText(), row.shown) << row.text;
    }
    XKVNode time;
    time = XTime{25'000'000};
    EXPECT_EQ(time.asInt64(), 25'000'000);
    time.setAttr("unit", "tick");
    EXPECT_EQ(XKVNode(time).attr("unit"), "tick");
    EXPECT_EQ(time.attr("other"), "");
}

TEST(IniFile, IsReadIntoSections)
{
    XKVNode root = XIniDecoder().parse("; note\nname = a b ; rest\nempty =\n"
                                       "[ one ]\nx=1 # one\n\"two words\" = 2\n? 3\n"
                                       "[two]\n# none\n[one]\ny = 2.5");
    EXPECT_EQ(root.toJson(),
              "{empty: \"\", name: \"a b\", one: {\"two words\": \"2\", x: \"1\", y: "
              "\"2.5\"}, two: {}}");
    EXPECT_EQ(root.at("one.y")->asDouble(), 2.5);
    EXPECT_EQ(XIniDecoder().parse(root.toIni()).toJson(), root.toJson());
}

TEST(IniFile, NamesWhatIsWrong)
{
    for (const TextCase& row :
         std::vector<TextCase>{{"[]", "row: 1, col: 1: Section name must be specified"},
                               {"[ \n]", "row: 1, col: 2: Section name must be specified"},
                               {"[open\n", "row: 1, col: 5: Missing right bracket ']'"},
                               {"key value", "row: 1, col: 9: An equal sign is required here"}})
        EXPECT_EQ(failureOf([&] { XIniDecoder().parse(row.text); }), row.expected) << row.text;
    EXPECT_EQ(failureOf([] { json("5").toIni(); }),
              "INI file configuration entry must be a value of key = value");
    EXPECT_EQ(failureOf([] { json("{a: []}").toIni(); }), "Ini profile does not support array");
    EXPECT_EQ(failureOf([] { json("{a: {b: {}}}").toIni(); }),
              "Ini profile does not support multi-level grouping");
}
