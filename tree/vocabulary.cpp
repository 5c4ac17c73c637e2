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

std::optional<std::size_t> unlessOpen(std::uint32_t count)
{
    return count == Constraint::open ? std::nullopt : std::optional<std::size_t>(count);
}

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
    record.maximumLength = unlessOpen(constraint.maximumLength);
    if (constraint.rows != Constraint::open || constraint.columns != Constraint::open) {
        record.size = {unlessOpen(constraint.rows), unlessOpen(constraint.columns)};
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

/// Options that no name is needed for: the words leave nothing to refuse.
SettingOptions unnamedOptions()
{
    return {settings::detail::defaultProperties(), {}, nullptr, {}};
}

/// Properties of nodes with a frequent value, or none, and no trait but their visibility. They are the same
/// for all of them, so they are made once.
class FrequentProperties
{
public:
    explicit FrequentProperties(ScriptFunction validator, const Array& value = {})
        : validator_(validator),
          byVisibility_{make(value, Visibility::unstated), make(value, Visibility::visible),
                        make(value, Visibility::hidden)}
    {}

    [[nodiscard]] const FactorySettingProperties& of(Visibility visibility) const
    {
        return byVisibility_[static_cast<std::size_t>(visibility)];
    }

    /// Null where the traits say more than the visibility.
    [[nodiscard]] const FactorySettingProperties* find(Flags flags, const Parts& parts) const
    {
        const bool isFrequent =
            &parts == &detail::noParts && flags.validator == validator_ && flags.access == Access::unstated;
        return isFrequent ? &of(flags.visibility) : nullptr;
    }

private:
    [[nodiscard]] FactorySettingProperties make(const Array& value, Visibility visibility) const
    {
        SettingOptions options = unnamedOptions();
        options.properties.factoryValue = value;
        apply(options, {.validator = validator_, .visibility = visibility});
        return std::move(options.properties);
    }

    ScriptFunction validator_;
    std::array<FactorySettingProperties, 3> byVisibility_;
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
    addValue(group, name, Array(), flags, parts);
}

void addValue(FactoryGroup& group, std::string_view name, Array&& value, Flags flags, const Parts& parts)
{
    SettingOptions options = unnamedOptions();
    options.properties.factoryValue = std::move(value);
    apply(options, flags);
    if (&parts != &noParts) {
        apply(options, parts);
    }
    settings::detail::addReadySetting(group, std::string(name), options.properties);
}

void addLogical(FactoryGroup& group, std::string_view name, bool value, Flags flags, const Parts& parts)
{
    static const std::array values{internal::makeScalar<bool>(false), internal::makeScalar<bool>(true)};
    static const std::array frequent{FrequentProperties(logicalScalar, values[0]),
                                     FrequentProperties(logicalScalar, values[1])};
    const std::size_t index = value ? 1 : 0;
    if (const auto* const properties = frequent[index].find(flags, parts)) {
        return settings::detail::addReadySetting(group, std::string(name), *properties);
    }
    addValue(group, name, Array(values[index]), flags, parts);
}

void addText(FactoryGroup& group, std::string_view name, std::string_view value, Flags flags,
             const Parts& parts)
{
    static const FrequentProperties empty(stringScalar, internal::charvec(std::string()));
    if (value.empty()) {
        if (const auto* const properties = empty.find(flags, parts)) {
            return settings::detail::addReadySetting(group, std::string(name), *properties);
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

void addCell(FactoryGroup& group, std::string_view name, std::span<const char* const> strings, Flags flags,
             const Parts& parts)
{
    addValue(group, name, internal::cellstr({strings.begin(), strings.end()}), flags, parts);
}

}  // namespace detail

FactoryGroup addGroup(FactoryGroup& parent, const char* name, Visibility visibility)
{
    static const FrequentProperties properties(unchecked);
    return settings::detail::addReadyGroup(parent, name, properties.of(visibility));
}

}  // namespace verdix::settings::tree
