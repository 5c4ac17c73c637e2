#include "json.hpp"

#include <settings_core/files/text_position.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value_stack.hpp>

#include <charconv>
#include <cmath>

namespace vx::review {

namespace {

namespace json = boost::json;
using json::error_code;
using json::string_view;

/// Builds the value that the parser reads. The only difference to json::parse() is that a double is the
/// nearest one to its digits: the parser's own may miss the last bit.
class ValueBuilder
{
public:
    static constexpr std::size_t max_object_size = json::object::max_size();
    static constexpr std::size_t max_array_size = json::array::max_size();
    static constexpr std::size_t max_key_size = json::string::max_size();
    static constexpr std::size_t max_string_size = json::string::max_size();

    bool on_document_begin(error_code&) { return stack_.reset(), true; }
    bool on_document_end(error_code&) { return true; }
    bool on_object_begin(error_code&) { return true; }
    bool on_object_end(std::size_t size, error_code&) { return stack_.push_object(size), true; }
    bool on_array_begin(error_code&) { return true; }
    bool on_array_end(std::size_t size, error_code&) { return stack_.push_array(size), true; }
    bool on_key_part(string_view part, std::size_t, error_code&) { return stack_.push_chars(part), true; }
    bool on_key(string_view rest, std::size_t, error_code&) { return stack_.push_key(rest), true; }
    bool on_string_part(string_view part, std::size_t, error_code&) { return stack_.push_chars(part), true; }
    bool on_string(string_view rest, std::size_t, error_code&) { return stack_.push_string(rest), true; }
    bool on_number_part(string_view, error_code&) { return true; }
    bool on_int64(std::int64_t number, string_view, error_code&) { return stack_.push_int64(number), true; }
    bool on_uint64(std::uint64_t number, string_view, error_code&)
    {
        return stack_.push_uint64(number), true;
    }
    bool on_double(double number, string_view digits, error_code&)
    {
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        return stack_.push_double(number), true;
    }
    bool on_bool(bool value, error_code&) { return stack_.push_bool(value), true; }
    bool on_null(error_code&) { return stack_.push_null(), true; }
    bool on_comment_part(string_view, error_code&) { return true; }
    bool on_comment(string_view, error_code&) { return true; }

    json::value release() { return stack_.release(); }

private:
    json::value_stack stack_;
};

void appendArray(std::string& text, const json::array& array, JsonStyle style)
{
    text += '[';
    for (const json::value& element : array) {
        text += &element == array.data() ? "" : ", ";
        appendJson(text, element, style);
    }
    text += ']';
}

void appendObject(std::string& text, const json::object& object, JsonStyle style)
{
    const bool isBrief = style == JsonStyle::brief;
    std::string_view separator = isBrief ? "{" : "{ ";
    for (const auto& [key, value] : object) {
        text.append(separator).append(isBrief ? std::string(key) : json::serialize(key)).append(": ");
        appendJson(text, value, style);
        separator = ", ";
    }
    text += object.empty() ? "{}" : isBrief ? "}" : " }";
}

}  // namespace

json::value parseJson(std::string_view text)
{
    const std::size_t begin = text.starts_with(core::byteOrderMark) ? core::byteOrderMark.size() : 0;
    json::basic_parser<ValueBuilder> parser{json::parse_options()};
    error_code error;
    const std::size_t size =
        begin + parser.write_some(false, text.data() + begin, text.size() - begin, error);
    if (error || size != text.size()) {
        throw core::ParseError(size,
                               (error ? error : json::make_error_code(json::error::extra_data)).message());
    }
    return parser.handler().release();
}

void appendJson(std::string& text, const json::value& value, JsonStyle style)
{
    switch (value.kind()) {
    case json::kind::object:
        appendObject(text, value.get_object(), style);
        break;
    case json::kind::array:
        appendArray(text, value.get_array(), style);
        break;
    case json::kind::double_:
        text += std::isfinite(value.get_double()) ? core::formatNumber(value.get_double()) : "null";
        break;
    default:
        text += json::serialize(value);
        break;
    }
}

}  // namespace vx::review
