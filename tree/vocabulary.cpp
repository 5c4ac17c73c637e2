#include <tree/vocabulary.hpp>

#include <optional>

namespace verdix::settings::tree {

namespace {

using detail::Flags;
using detail::Parts;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using ::settings::core::MValidator;
using ::settings::core::detail::FactorySettingProperties;
using settings::detail::Option;
using settings::detail::store;

std::optional<std::size_t> toOptional(std::uint32_t count)
{
    return count == Constraint::open ? std::nullopt : std::optional<std::size_t>(count);
}

internal::SettingValueValidator makeValueValidator(const Constraint& constraint,
                                                   std::span<const char* const> allowed)
{
    // Names every member, so that a new one does not compile until it is stored here.
    const auto& [lower, upper, maximumLength, rows, columns, isNumeric, isNormalised, isColour,
                 elementClass] = constraint;
    internal::SettingValueValidator validator;
    if (isNumeric) {
        validator.range = {lower, upper};
    }
    validator.allowedValues.reserve(allowed.size());
    for (const std::string_view string : allowed) {
        validator.allowedValues.emplace_back(string.begin(), string.end());
    }
    validator.maximumLength = toOptional(maximumLength);
    if (rows != Constraint::open || columns != Constraint::open) {
        validator.size = {toOptional(rows), toOptional(columns)};
    }
    if (elementClass != ArrayType::UNKNOWN) {
        validator.elementClass = elementClass;
    }
    if (isColour) {
        validator.colour = isNormalised ? Colour::normalised : Colour::wholeNumbers;
    }
    return validator;
}

/// Nearly all settings use one of these validators, so they share one object each.
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
    if (flags.visibility != Visibility::unspecified) {
        store(options, Option::hidden, flags.visibility == Hidden);
    }
    if (flags.access != Access::unspecified) {
        store(options, Option::readOnly, flags.access == Access::readOnly);
    }
}

void apply(SettingOptions& options, const Parts& parts)
{
    if (parts.constraint != nullptr) {
        store(options, Option::valueValidator, makeValueValidator(*parts.constraint, parts.allowed));
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

/// Returns options without a full name, which is only used in error messages: invalid options do not compile
/// here.
SettingOptions emptyOptions()
{
    return {settings::detail::defaultProperties(), {}, nullptr, {}};
}

/// The properties of nodes that have a common factory value, or none, and no trait except visibility. Shared,
/// because many nodes have exactly these properties.
class FrequentProperties
{
public:
    explicit FrequentProperties(ScriptFunction validator, const Array& value = {})
        : validator_(validator),
          byVisibility_{make(value, Visibility::unspecified), make(value, Visibility::visible),
                        make(value, Visibility::hidden)}
    {}

    [[nodiscard]] const FactorySettingProperties& of(Visibility visibility) const
    {
        return byVisibility_[static_cast<std::size_t>(visibility)];
    }

    /// Returns the shared properties for a line with these traits; null if it has a trait other than
    /// visibility.
    [[nodiscard]] const FactorySettingProperties* find(Flags flags, const Parts& parts) const
    {
        const bool isFrequent = &parts == &detail::noParts && flags.validator == validator_ &&
                                flags.access == Access::unspecified;
        return isFrequent ? &of(flags.visibility) : nullptr;
    }

private:
    [[nodiscard]] FactorySettingProperties make(const Array& value, Visibility visibility) const
    {
        SettingOptions options = emptyOptions();
        options.properties.factoryValue = value;
        apply(options, {.validator = validator_, .visibility = visibility});
        return std::move(options.properties);
    }

    ScriptFunction validator_;
    std::array<FactorySettingProperties, 3> byVisibility_;
};

void addFrequent(FactoryGroup& group, std::string_view name, const FactorySettingProperties& properties)
{
    insert(group, settings::detail::makeNamedChild<FactorySetting>(group, std::string(name)), properties);
}

}  // namespace

namespace detail {

constinit const Parts noParts;
constinit const Constraint anyColour = colourTriple().constraint;
constinit const Parts onlyColour = [] {
    Parts parts;
    parts.constraint = &anyColour;
    return parts;
}();

void addUnset(FactoryGroup& group, std::string_view name, Flags flags, const Parts& parts)
{
    addValue(group, name, Array(), flags, parts);
}

void addValue(FactoryGroup& group, std::string_view name, Array&& value, Flags flags, const Parts& parts)
{
    auto setting = settings::detail::makeNamedChild<FactorySetting>(group, std::string(name));
    SettingOptions options = emptyOptions();
    options.properties.factoryValue = std::move(value);
    apply(options, flags);
    if (&parts != &noParts) {
        apply(options, parts);
    }
    insert(group, std::move(setting), options.properties);
}

void addLogical(FactoryGroup& group, std::string_view name, bool value, Flags flags, const Parts& parts)
{
    static const std::array values{internal::makeScalar<bool>(false), internal::makeScalar<bool>(true)};
    static const std::array frequent{FrequentProperties(logicalScalar, values[0]),
                                     FrequentProperties(logicalScalar, values[1])};
    const std::size_t index = value ? 1 : 0;
    if (const auto* const properties = frequent[index].find(flags, parts)) {
        return addFrequent(group, name, *properties);
    }
    addValue(group, name, Array(values[index]), flags, parts);
}

void addCharvec(FactoryGroup& group, std::string_view name, std::string_view value, Flags flags,
                const Parts& parts)
{
    static const FrequentProperties empty(stringScalar, internal::charvec(std::string()));
    if (value.empty()) {
        if (const auto* const properties = empty.find(flags, parts)) {
            return addFrequent(group, name, *properties);
        }
    }
    addValue(group, name, internal::charvec(std::string(value)), flags, parts);
}

void addString(FactoryGroup& group, std::string_view name, const char* value, Flags flags, const Parts& parts)
{
    const foundation::verdixdata::standalone::ClientArrayFactory factory;
    addValue(group, name, factory.createScalarInternal(value), flags, parts);
}

void addInteger(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts)
{
    addValue(group, name, internal::makeScalar<int>(value), flags, parts);
}

void addNumber(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts)
{
    addValue(group, name, internal::makeScalar<double>(value), flags, parts);
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

void addNumberRow(FactoryGroup& group, std::string_view name, std::span<const int> values, Flags flags,
                  const Parts& parts)
{
    addValue(group, name, internal::makeRow<double>(values), flags, parts);
}

void addCell(FactoryGroup& group, std::string_view name, std::span<const char* const> strings, Flags flags,
             const Parts& parts)
{
    addValue(group, name, internal::cellstr({strings.begin(), strings.end()}), flags, parts);
}

void addCell(FactoryGroup& group, std::string_view name, std::span<const CellString> strings, Flags flags,
             const Parts& parts)
{
    addValue(group, name, internal::cellstr({strings.begin(), strings.end()}), flags, parts);
}

}  // namespace detail

FactoryGroup addGroup(FactoryGroup& parent, const char* name, Visibility visibility)
{
    static const FrequentProperties properties(ScriptFunction::none);
    auto group = settings::detail::makeNamedChild<FactoryGroup>(parent, name);
    return insert(parent, std::move(group), properties.of(visibility));
}

}  // namespace verdix::settings::tree
