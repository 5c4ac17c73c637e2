#pragma once

// Checked access to the parts of a JSON document.

#include <settings_core/files/json_reader.hpp>

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::review {

/// A value in a JSON document, which must outlive it. All functions throw core::ParseError with the position
/// if the document has something else there.
class JsonItem
{
public:
    explicit JsonItem(const core::JsonValue& value) : value_(value) {}

    [[nodiscard]] bool isObject() const noexcept { return value_.kind == core::JsonKind::object; }
    [[nodiscard]] bool isString() const noexcept { return value_.kind == core::JsonKind::string; }
    [[nodiscard]] bool isNull() const noexcept { return value_.kind == core::JsonKind::null; }

    /// Throws the error "expected <what>".
    [[noreturn]] void fail(const std::string& what) const;

    [[nodiscard]] const std::vector<core::JsonMember>& members() const;
    [[nodiscard]] JsonItem member(std::string_view name) const;
    /// Returns the member; nothing if it is missing or null.
    [[nodiscard]] std::optional<JsonItem> find(std::string_view name) const;

    [[nodiscard]] std::vector<JsonItem> elements() const;
    [[nodiscard]] bool boolean() const;
    [[nodiscard]] std::u16string utf16() const;
    [[nodiscard]] std::string string() const;
    /// Returns a number that fits T without rounding.
    template <std::integral T>
    [[nodiscard]] T integer() const;
    /// Returns a number, or one of "NaN", "Inf" and "-Inf".
    [[nodiscard]] double number() const;

private:
    const core::JsonValue& value_;
};

}  // namespace vx::review
