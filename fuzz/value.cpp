// What `set` is given, in both notations, for a setting of each class: refused with a position, or read, in
// which case it can be printed and read again.

#include <data/unprintable.hpp>
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

/// In JSON, a setting that says no class takes an empty cell for an empty matrix.
bool hasJsonForm(const Array& value, const ParseTarget& form)
{
    return form.elementClass || value.getType() != ArrayType::CELL || value.getNumberOfElements() != 0;
}

/// In text, a number that is not finite is taken for a string where it stands alone, by a setting that says
/// no class or takes names of colours.
bool isReadAs(ArrayType type, const std::string& json, const ParseTarget& form)
{
    return (form.elementClass && !form.acceptsColourNames) || parseJsonValue(json, form).getType() == type;
}

/// The text form shows unprintable characters as escapes, has no empty matrix of several rows, no surrogate
/// without its partner, and no sign that tells a missing string from the word.
bool hasTextForm(const Array& value, std::string_view json)
{
    const std::string text = formatValue(value);
    const bool isEmptyMatrix = value.getDimensions()[0] > 1 && value.getNumberOfElements() == 0;
    return vx::data::escapeUnprintable(text) == text && !isEmptyMatrix && json != "null" &&
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
    const std::string json = valueToJson(value, form);
    require(!hasJsonForm(value, form) || parseJsonValue(json, form) == value, "JSON holds the value", json);
    if (isReadAs(value.getType(), valueToJson(value), form) && hasTextForm(value, json)) {
        const std::string text = formatValueOnOneLine(value, std::numeric_limits<std::size_t>::max());
        require(parseValue(text, form) == value, "the text form reads back", text);
    }
    if (const auto invalid = checkValue(setting, value)) {
        require(!invalid->message.empty(), "a refusal says why", json);
    }
    require(adaptValue(setting, value).isAssigned(), "adapting keeps a value", json);
    return 0;
}
