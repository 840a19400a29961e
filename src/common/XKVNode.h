#pragma once

#include "common/XString.h"
#include "common/XTime.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <variant>
#include <vector>

namespace xstd {

/// A tree of values: what documents and settings are made of between the program and their text.
/// A node owns its children and knows its parent. The entries of an object stand in the order of
/// their keys, so that a document reads the same however it was built.
///
/// A copy or a moved node is a root; an assignment keeps the place of the node in its tree. What
/// holds references to children must not outlive a change of their container.
class XKVNode {
public:
    enum Type : int32_t {
        typeNull = 0,
        typeBool = 1,
        typeInt = 2,
        typeReal = 3,
        typeTime = 4,
        typeString = 5,
        typeArray = 6,
        typeObject = 7
    };
    using Array = std::vector<XKVNode>;
    using Object = std::map<XString, XKVNode>;

    XKVNode() = default;
    explicit XKVNode(Type type) { setType(type); }
    XKVNode(const XKVNode& other);
    XKVNode(XKVNode&& other) noexcept;
    XKVNode& operator=(const XKVNode& other);
    XKVNode& operator=(XKVNode&& other) noexcept;
    virtual ~XKVNode() = default;

    XKVNode& operator=(bool value);
    XKVNode& operator=(int64_t value);
    XKVNode& operator=(int value) { return *this = int64_t(value); }
    XKVNode& operator=(double value);
    XKVNode& operator=(const XString& value);
    XKVNode& operator=(const char* value) { return *this = XString(value); }
    XKVNode& operator=(XTime value);

    Type type() const { return static_cast<Type>(m_value.index()); }
    /// Makes the node an empty value of that type, unless it has the type already.
    void setType(Type type);
    /// Drops value and attributes; the node is null.
    void clear();

    bool isNull() const { return type() == typeNull; }
    bool isBool() const { return type() == typeBool; }
    bool isInt() const { return type() == typeInt; }
    bool isFloat() const { return type() == typeReal; }
    bool isTime() const { return type() == typeTime; }
    bool isString() const { return type() == typeString; }
    bool isArray() const { return type() == typeArray; }
    bool isObject() const { return type() == typeObject; }

    /// Numbers are true unless 0, texts and containers unless empty.
    bool asBool() const;
    /// A time gives its ticks, a text the number that it begins with; containers and null give 0.
    /// A real beyond the range gives the nearest integer that there is.
    int64_t asInt64() const;
    double asDouble() const;
    /// The text of a single value; empty for null, booleans and containers.
    XString toText() const;

    /// The entry of that name, made where it is missing; a null node becomes an object. Throws
    /// std::runtime_error "It is not an object" for a node of any other type.
    XKVNode& operator[](const XString& key);
    /// An array's element, from 0; the index behind the last one appends. Other indexes throw
    /// std::runtime_error "index is out bound!". Of an object it is null, of a single value the
    /// node itself.
    XKVNode& at(int64_t index);
    /// The same without appending.
    const XKVNode& at(int64_t index) const;
    /// Walks a path such as a.b[2].c; with create missing steps are made, the last included. Null
    /// where a step does not exist or meets a node that it cannot enter.
    XKVNode* at(const XString& path, bool create);
    const XKVNode* at(const XString& path) const;

    /// Children of a container; 0 for a single value.
    size_t size() const;
    /// The children; empty for a node of another type.
    const Array& elements() const;
    const Object& entries() const;

    XKVNode* parent() { return m_parent; }
    const XKVNode* parent() const { return m_parent; }
    /// The place of a direct child, or of this node in its parent; -1 if there is none.
    int64_t indexOf(const XKVNode& child) const;
    int64_t index() const { return m_parent == nullptr ? -1 : m_parent->indexOf(*this); }
    /// The key of a direct child, "[2]" for one of an array, else empty; of this node in its
    /// parent.
    XString keyOf(const XKVNode& child) const;
    XString key() const { return m_parent == nullptr ? XString() : m_parent->keyOf(*this); }
    /// The way from the root to this node.
    XString path() const;

    /// A note beside the value; empty where there is none.
    XString attr(const XString& key) const;
    void setAttr(const XString& key, const XString& value);

    /// The tree as JSON text. With a width of 0 it stands on one line, else a child begins a line
    /// of its own, indented by width blanks a level. Throws std::runtime_error for a number that is
    /// not finite.
    XString toJson(int level = 0, int width = 0) const;
    /// An object of single values and of objects of such, as an INI file. Throws
    /// std::runtime_error for any other tree.
    XString toIni() const;

private:
    using Attributes = std::map<XString, XString>;

    void adoptChildren();
    XKVNode& append(Array& array);
    XKVNode* child(const XString& key, bool create);
    XKVNode* child(size_t index, bool create);
    void appendJson(XString& text, int level, int width) const;

    XKVNode* m_parent = nullptr;
    std::unique_ptr<Attributes> m_attributes;
    std::variant<std::monostate, bool, int64_t, double, XTime, XString, Array, Object> m_value;
};

/// The tree of a JSON document.
class XJson : public XKVNode {
public:
    using XKVNode::XKVNode;
    using XKVNode::operator=;
    XJson() = default;
    XJson(const XKVNode& node) : XKVNode(node) {}
    XJson(XKVNode&& node) noexcept : XKVNode(std::move(node)) {}
};

} // namespace xstd
