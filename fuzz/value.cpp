// What `set` is given, in both notations, for a setting of each class: refused with a position, or read, in
// which case it can be printed and read again.

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <algorithm>
#include <fuzz/fuzzing.hpp>
#include <limits>
#include <tests/support/sample_settings.hpp>
#include <vector>

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using fuzz::require;
using namespace vx::core;

const Node& settingAt(std::size_t index)
{
    static const SettingsTree tree = tests::sampleTree();
    static const auto settings = [] {
        std::vector<const Node*> found;
        std::ranges::copy_if(tree.nodes(), std::back_inserter(found),
                             [](const Node* node) { return node->kind() == NodeKind::setting; });
        return found;
    }();
    return *settings[index % settings.size()];
}

Array read(std::string_view text, bool isJson, const ParseTarget& form)
{
    try {
        return isJson ? parseJsonValue(text, form) : parseValue(text, form);
    } catch (const ParseError& error) {
        require(error.offset() <= text.size() && *error.what() != '\0', "an error says where and what", text);
        return {};
    }
}

/// A number that is not finite is taken for a text where it stands alone, and in JSON an empty cell for an
/// empty matrix, by a setting that says no class; the former also by one that takes words for colours.
bool isReadAs(ArrayType type, const std::string& json, const ParseTarget& form)
{
    return (form.elementClass && !form.acceptsColourNames) || parseJsonValue(json, form).getType() == type;
}

/// The text form shows control characters as escapes, has no empty matrix of several rows, no surrogate
/// without its partner, and no sign that tells a missing string from the word.
bool hasTextForm(const Array& value, std::string_view json)
{
    const auto isControl = [](char c) { return (c >= 0 && c < 0x20) || c == 0x7f; };
    const bool isEmptyMatrix = value.getDimensions()[0] > 1 && value.getNumberOfElements() == 0;
    return std::ranges::none_of(formatValue(value), isControl) && !isEmptyMatrix && json != "null" &&
           json.find("\\u") == std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Bytes bytes(data, size);
    const Node& setting = settingAt(bytes.below(256));
    const bool isJson = bytes.below(2) == 1;
    const ParseTarget form = constraintOf(setting.properties());
    const Array value = read(bytes.rest(), isJson, form);
    if (!value.isAssigned()) {
        return 0;
    }
    const std::string json = valueToJson(value);
    const bool hasForm = isReadAs(value.getType(), json, form);
    require(!hasForm || parseJsonValue(json, form) == value, "JSON holds the value", json);
    if (hasForm && hasTextForm(value, json)) {
        const std::string text = formatValueOnOneLine(value, std::numeric_limits<std::size_t>::max());
        require(parseValue(text, form) == value, "the text form reads back", text);
    }
    for (const Diagnostic& diagnostic : checkValue(setting, value)) {
        require(!diagnostic.message.empty(), "a refusal says why", json);
    }
    require(adaptValue(setting, value).isAssigned(), "adapting keeps a value", json);
    return 0;
}
