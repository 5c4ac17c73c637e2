#include "value_constraints.hpp"

#include <algorithm>
#include <string_view>
#include <variant>

namespace vx::tool {

namespace {

using core::Node;
using foundation::verdixdata::ArrayType;
using Records = ValueConstraints::Records;

bool isText(ArrayType type)
{
    return type == ArrayType::CHAR || type == ArrayType::STRING;
}

bool isNumeric(ArrayType type)
{
    return !isText(type) && type != ArrayType::LOGICAL && type != ArrayType::CELL;
}

void require(ValueConstraints& values, bool kept)
{
    values.isImpossible = values.isImpossible || !kept;
}

void restrict(ValueConstraints& values, std::optional<std::size_t>& extent,
              const std::optional<std::size_t>& demanded)
{
    require(values, !extent || !demanded || extent == demanded);
    extent = demanded ? demanded : extent;
}

void restrict(ValueConstraints& values, const Records::Size& size)
{
    restrict(values, values.size.rows, size.rows);
    restrict(values, values.size.columns, size.columns);
}

void restrict(ValueConstraints& values, const Records::Range& range)
{
    require(values, values.form.elementClass && isNumeric(*values.form.elementClass));
    values.range = {std::max(values.range.lower, range.lower), std::min(values.range.upper, range.upper)};
}

void restrict(ValueConstraints& values, const std::vector<std::u16string>& texts)
{
    const ArrayType type = values.form.elementClass.value_or(ArrayType::CHAR);
    require(values, isText(type) || type == ArrayType::CELL);
    std::vector<std::u16string> kept = texts;
    if (values.texts) {
        std::erase_if(kept, [&](const std::u16string& text) {
            return std::find(values.texts->begin(), values.texts->end(), text) == values.texts->end();
        });
    }
    values.texts = std::move(kept);
    values.isPresent = true;
}

void addColour(ValueConstraints& values, const Records::ConfigData& record)
{
    const bool isNormalised = *record.colour == Records::Colour::normalised;
    restrict(values, Records::Size{1, 3});
    restrict(values, Records::Range{0, isNormalised ? 1.0 : 255.0});
    values.isWhole = values.isWhole || !isNormalised;
    values.wordsForNumbers = record.allowedValues;
}

void addRecord(ValueConstraints& values, const Records::ConfigData& record)
{
    if (record.range) {
        restrict(values, *record.range);
    }
    if (!record.allowedValues.empty() && !record.colour) {
        restrict(values, record.allowedValues);
    }
    if (record.maximumLength) {
        values.maximumLength = std::min(values.maximumLength, *record.maximumLength);
    }
    if (record.size) {
        restrict(values, *record.size);
    }
    if (record.elementClass) {
        require(values, values.form.elementClass == record.elementClass);
    }
    if (record.colour) {
        addColour(values, record);
    }
}

void addScript(ValueConstraints& values, std::string_view function)
{
    const ArrayType type = values.form.elementClass.value_or(ArrayType::UNKNOWN);
    if (function == "mustBeLogicalScalar") {
        require(values, type == ArrayType::LOGICAL);
    } else if (function == "mustBeStringScalar") {
        require(values, isText(type));
        values.isPresent = true;
    } else if (function == "mustBeIntegerScalar" || function == "mustBeNumericScalar") {
        require(values, isNumeric(type));
        values.isWhole = values.isWhole || function == "mustBeIntegerScalar";
    } else {
        return;
    }
    if (type != ArrayType::CHAR) {
        restrict(values, Records::Size{1, 1});
    }
}

/// The factory value's own size, unless texts and cells, which have any length, or a record that states one.
void addFactoryShape(ValueConstraints& values, const Node::Properties& properties)
{
    const auto& records = properties.valueValidators;
    const bool statesSize =
        std::any_of(records.begin(), records.end(),
                    [](const Records::ConfigData& record) { return record.size || record.colour; });
    const auto& factory = properties.factoryValue;
    const ArrayType type = factory.getType();
    if (!factory.isAssigned() || statesSize || type == ArrayType::CHAR || type == ArrayType::CELL) {
        return;
    }
    const auto dimensions = factory.getDimensions();
    require(values, dimensions.size() == 2);  // settings files hold nothing else
    restrict(values, Records::Size{dimensions[0], dimensions[1]});
}

}  // namespace

ValueConstraints constraintsOf(const Node& setting)
{
    const Node::Properties& properties = setting.properties();
    ValueConstraints values{.form = core::parseTargetOf(setting),
                            .isImpossible = properties.readOnly.value()};
    addFactoryShape(values, properties);
    if (const auto* script = std::get_if<::settings::core::MValidator>(&properties.validator)) {
        addScript(values, script->function());
    }
    for (const Records::ConfigData& record : properties.valueValidators) {
        addRecord(values, record);
    }
    return values;
}

}  // namespace vx::tool
