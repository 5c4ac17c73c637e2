#include <tree/vocabulary.hpp>

#include <vector>

namespace verdix::settings::tree {

namespace {

using detail::Flags;
using detail::Parts;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using ::settings::core::MValidator;
using settings::detail::Option;
using settings::detail::store;

internal::SettingValueValidator recordOf(const Constraint& constraint, std::span<const char* const> allowed)
{
    internal::SettingValueValidator record;
    if (constraint.isNumeric) {
        record.range = {constraint.lower, constraint.upper};
    }
    record.allowedValues.reserve(allowed.size());
    for (const std::string_view string : allowed) {
        record.allowedValues.emplace_back(string.begin(), string.end());
    }
    if (constraint.maximumLength != Constraint::open) {
        record.maximumLength = constraint.maximumLength;
    }
    if (constraint.columns != Constraint::open) {
        record.size = {constraint.rows, constraint.columns};
    }
    if (constraint.elementClass != ArrayType::UNKNOWN) {
        record.elementClass = constraint.elementClass;
    }
    if (constraint.isColour) {
        record.colour = constraint.isNormalised ? Colour::normalised : Colour::wholeNumbers;
    }
    return record;
}

/// Nearly every setting has one of these validators: they are made once, and shared.
const MValidator& validatorOf(ScriptFunction function)
{
    static const std::array validators{MValidator("verdix.settings", "mustBeLogicalScalar"),
                                       MValidator("verdix.settings", "mustBeStringScalar"),
                                       MValidator("verdix.settings", "mustBeIntegerScalar"),
                                       MValidator("verdix.settings", "mustBeNumericScalar")};
    return validators[static_cast<std::size_t>(function) - 1];
}

FunctionDescriptor descriptorOf(const NativeFunction& native)
{
    return {native.function, "C", native.library};
}

void apply(SettingOptions& options, Flags flags)
{
    if (flags.validator != ScriptFunction::none) {
        options.properties.validator.emplace<MValidator>(validatorOf(flags.validator));
    }
    if (flags.visibility != Visibility::unstated) {
        store(options, Option::hidden, flags.visibility == Hidden);
    }
    if (flags.access != Access::unstated) {
        store(options, Option::readOnly, flags.access == Access::readOnly);
    }
}

void apply(SettingOptions& options, const Parts& parts)
{
    if (parts.constraint != nullptr) {
        store(options, Option::valueValidator, recordOf(*parts.constraint, parts.allowed));
    }
    if (parts.validator != nullptr) {
        store(options, Option::validationFcn, descriptorOf(*parts.validator));
    }
    if (parts.callable != nullptr) {
        store(options, Option::validationFcn, ::settings::core::CPPValidator(*parts.callable));
    }
    if (parts.runTimeDefault != nullptr) {
        store(options, Option::factoryValueFcn, descriptorOf(*parts.runTimeDefault));
    }
    if (parts.errorHandler != nullptr) {
        store(options, Option::errorHandler, ::settings::core::detail::ErrorHandler(parts.errorHandler));
    }
}

/// A setting on its way into the tree: its options are applied to it before it is realized.
class Line
{
public:
    Line(FactoryGroup& group, std::string_view name)
        : group_(group),
          setting_(settings::detail::makeChild<FactorySetting>(group, std::string(name))),
          options_(setting_)
    {}

    template <class Value>
    Line& withValue(Value&& value)
    {
        store(options_, Option::factoryValue, std::forward<Value>(value));
        return *this;
    }

    void finish(Flags flags, const Parts& parts)
    {
        apply(options_, flags);
        if (&parts != &detail::noParts) {
            apply(options_, parts);
        }
        insert(group_, std::move(setting_), options_.properties);
    }

private:
    FactoryGroup& group_;
    FactorySetting setting_;
    SettingOptions options_;
};

}  // namespace

namespace detail {

constinit const Parts noParts;
constinit const Constraint anyColour = colourTriple();
constinit const Parts onlyColour = [] {
    Parts parts;
    parts.constraint = &anyColour;
    return parts;
}();

void addUnset(FactoryGroup& group, std::string_view name, Flags flags, const Parts& parts)
{
    Line(group, name).finish(flags, parts);
}

void addValue(FactoryGroup& group, std::string_view name, Array&& value, Flags flags, const Parts& parts)
{
    Line(group, name).withValue(std::move(value)).finish(flags, parts);
}

void addLogical(FactoryGroup& group, std::string_view name, bool value, Flags flags, const Parts& parts)
{
    Line(group, name).withValue(value).finish(flags, parts);
}

void addText(FactoryGroup& group, std::string_view name, std::string_view value, Flags flags,
             const Parts& parts)
{
    addValue(group, name, internal::charvec(std::string(value)), flags, parts);
}

void addString(FactoryGroup& group, std::string_view name, const char* value, Flags flags, const Parts& parts)
{
    Line(group, name).withValue(value).finish(flags, parts);
}

void addInteger(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts)
{
    addValue(group, name, internal::makeScalar<int>(value), flags, parts);
}

void addNumber(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts)
{
    Line(group, name).withValue(value).finish(flags, parts);
}

void addIntegerRow(FactoryGroup& group, std::string_view name, std::span<const int> values, Flags flags,
                   const Parts& parts)
{
    addValue(group, name, internal::makeRow<int>(values), flags, parts);
}

void addNumberRow(FactoryGroup& group, std::string_view name, std::span<const double> values, Flags flags,
                  const Parts& parts)
{
    addValue(group, name, internal::makeRow(values), flags, parts);
}

void addCell(FactoryGroup& group, std::string_view name, std::span<const char* const> strings, Flags flags,
             const Parts& parts)
{
    addValue(group, name, internal::cellstr({strings.begin(), strings.end()}), flags, parts);
}

}  // namespace detail

FactoryGroup addGroup(FactoryGroup& parent, const char* name, Visibility visibility)
{
    static constexpr OptionName hidden = "Hidden";
    if (visibility == Visibility::unstated) {
        return settings::addGroup(parent, std::string(name));
    }
    return settings::addGroup(parent, std::string(name), hidden, visibility == Hidden);
}

}  // namespace verdix::settings::tree
