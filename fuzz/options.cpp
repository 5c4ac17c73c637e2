// Nodes described by any sequence of options, names and types: each option is written as it was given or
// refused with nothing changed, and each node is made whole or not at all.

#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>
#include <builder/values.hpp>
#include <settings_core/settings_tree.hpp>
#include <settings_core/value_text.hpp>

#include <algorithm>
#include <array>
#include <fuzz/fuzzing.hpp>
#include <optional>
#include <set>
#include <stdexcept>
#include <variant>
#include <vector>

namespace {

using namespace verdix::settings;
using foundation::verdixdata::Array;
using fuzz::require;
using internal::SettingValueValidator;
using settings::core::CPPValidator;
using settings::core::detail::ErrorHandler;
using settings::core::detail::FactorySettingProperties;
using settings::core::detail::WritableFlag;

using Records = std::vector<SettingValueValidator>;
/// Of every type that some option takes, and one that none does. A text is given as a pointer to its
/// characters.
using Value = std::variant<bool, int, std::string, Array, FunctionDescriptor, CPPValidator,
                           SettingValueValidator, Records, ErrorHandler, double>;

enum Name : std::size_t
{
    hidden,
    readOnly,
    additionalFile,
    factoryValue,
    validationFcn,
    factoryValueFcn,
    valueValidator,
    errorHandler,
    nameCount
};

constexpr std::array<const char*, nameCount> names = {"Hidden",         "ReadOnly",      "AdditionalFile",
                                                      "FactoryValue",   "ValidationFcn", "FactoryValueFcn",
                                                      "ValueValidator", "ErrorHandler"};

/// What each option of a node is, as text: "" where it was not given.
using Summary = std::array<std::string, nameCount>;

std::string word(bool flag)
{
    return flag ? "true" : "false";
}

std::string show(const WritableFlag& flag, bool isTurned)
{
    return flag.isWritten() ? word(flag.value() != isTurned) : "";
}

std::string show(const Array& value)
{
    return value.isAssigned() ? vx::core::shapeText(value) + ": " + vx::core::valueText(value) : "";
}

std::string show(const Records& records)
{
    std::string text;
    for (const SettingValueValidator& record : records) {
        text += std::to_string(record.maximumLength.value_or(0)) + ' ';
    }
    return text;
}

template <class... Kinds>
std::string show(const std::variant<std::monostate, Kinds...>& function)
{
    return std::visit(
        [&]<class Kind>(const Kind& named) -> std::string {
            if constexpr (std::is_same_v<Kind, std::monostate>) {
                return "";
            } else {
                return std::to_string(function.index()) + ' ' + named.scope() + ' ' + named.function();
            }
        },
        function);
}

Summary summarise(const FactorySettingProperties& properties)
{
    return {show(properties.visible, true),
            show(properties.readOnly, false),
            properties.additionalFile ? "true" : "",
            show(properties.factoryValue),
            show(properties.validator),
            show(properties.runTimeDefault),
            show(properties.valueValidators),
            properties.errorHandler ? "true" : ""};
}

/// What an option is after it was given a value; nothing where it does not take one of that type.
struct Expectation
{
    using Result = std::optional<std::string>;

    Result operator()(bool flag) const
    {
        switch (name) {
        case hidden:
        case readOnly:
            return word(flag);
        case additionalFile:
            return flag ? "true" : "";
        default:
            return onlyOf(factoryValue, "logical, 1-by-1: " + word(flag));
        }
    }
    Result operator()(const std::string& text) const
    {
        const std::size_t dot = text.rfind('.');
        const std::string function = text.substr(0, dot) + ' ' + text.substr(dot + 1);
        switch (name) {
        case validationFcn:
            return "1 " + function;
        case factoryValueFcn:
            return "2 " + function;
        default:
            return onlyOf(factoryValue, "string, 1-by-1: " + text);
        }
    }
    Result operator()(const FunctionDescriptor& named) const
    {
        const bool isFunction = name == validationFcn || name == factoryValueFcn;
        if (!isFunction || (named.language != "C" && named.language != "Java")) {
            return std::nullopt;
        }
        const char* const native = name == validationFcn ? "2 " : "1 ";
        return (named.language == "C" ? native : "3 ") + named.owner + ' ' + named.function;
    }
    Result operator()(int number) const
    {
        return onlyOf(factoryValue, "double, 1-by-1: " + std::to_string(number));
    }
    Result operator()(const Array& array) const { return onlyOf(factoryValue, show(array)); }
    Result operator()(const CPPValidator&) const { return onlyOf(validationFcn, "4 verdix function"); }
    Result operator()(const SettingValueValidator& added) const
    {
        return onlyOf(valueValidator, before + show(Records{added}));
    }
    Result operator()(const Records& all) const { return onlyOf(valueValidator, show(all)); }
    Result operator()(const ErrorHandler&) const { return onlyOf(errorHandler, "true"); }
    Result operator()(double) const { return std::nullopt; }

    [[nodiscard]] Result onlyOf(std::size_t taker, std::string text) const
    {
        return name == taker ? Result(std::move(text)) : std::nullopt;
    }

    std::size_t name;
    std::string before;
};

Value valueIn(fuzz::Bytes& bytes)
{
    constexpr std::array<const char*, 4> languages = {"C", "Java", "c", ""};
    const auto text = [&bytes] { return std::string(bytes.until('\0')); };
    const auto record = [&bytes] { return SettingValueValidator{.maximumLength = bytes.below(256)}; };
    switch (bytes.below(10)) {
    case 0:
        return bytes.below(2) == 1;
    case 1:
        return static_cast<int>(bytes.below(256)) - 128;
    case 2: {
        std::string ascii = text();
        std::erase_if(ascii, [](char c) { return c < 0; });
        return ascii;
    }
    case 3:
        return internal::cellstr({text(), text()});
    case 4: {
        const char* const language = languages[bytes.below(languages.size())];
        std::string function = text();
        return FunctionDescriptor{std::move(function), language, text()};
    }
    case 5:
        return makeCppValidator([](const auto&, const std::string&, const Array&) {});
    case 6:
        return record();
    case 7:
        return Records{record(), record()};
    case 8:
        return ErrorHandler([](const std::string&, const Array&) {});
    default:
        return 1.5;
    }
}

void apply(SettingOptions& options, const std::string& name, const Value& value)
{
    std::visit(
        [&]<class Type>(const Type& given) {
            if constexpr (std::is_same_v<Type, std::string>) {
                applyOption(options, name, given.c_str());
            } else {
                applyOption(options, name, given);
            }
        },
        value);
}

/// Gives the node an option; whether it took it.
bool applyNext(SettingOptions& options, fuzz::Bytes& bytes)
{
    const std::size_t choice = bytes.below(nameCount + 1);
    const std::string name = choice < nameCount ? names[choice] : std::string(bytes.until('\0'));
    const auto index = static_cast<std::size_t>(std::ranges::find(names, name) - names.begin());
    const bool isKnown = index < nameCount;
    const Value value = valueIn(bytes);
    Summary after = summarise(options.properties);
    const auto outcome = isKnown ? std::visit(Expectation{index, after[index]}, value) : std::nullopt;
    if (outcome) {
        after[index] = *outcome;
    }
    bool isTaken = true;
    try {
        apply(options, name, value);
    } catch (const std::logic_error& error) {
        isTaken = false;
        const bool isOwnText = index == factoryValue && error.what() == std::string_view("Value is invalid.");
        require(isOwnText || std::string_view(error.what()).starts_with(options.fullName() + ": "),
                "a refusal names the setting", error.what());
    }
    require(isTaken == outcome.has_value(), "an option takes its own types", name);
    require(summarise(options.properties) == after, "an option changes itself alone, or nothing", name);
    return isTaken;
}

class Area
{
public:
    void addNext(fuzz::Bytes& bytes)
    {
        constexpr std::array<const char*, 6> usual = {"a", "b", "c", "", "a.b", "A"};
        const std::size_t choice = bytes.below(usual.size() + 1);
        std::string name = choice < usual.size() ? usual[choice] : std::string(bytes.until('\0'));
        const bool isSetting = bytes.below(2) == 0;
        if (isSetting) {
            add(detail::makeSetting(root_, std::move(name)), bytes);
        } else {
            add(detail::makeGroup(root_, std::move(name)), bytes);
        }
    }

private:
    template <class Node>
    void add(Node node, fuzz::Bytes& bytes)
    {
        SettingOptions options = detail::makeOptions(node);
        for (std::size_t left = bytes.below(8); left > 0; --left) {
            if (!applyNext(options, bytes)) {
                return;
            }
        }
        const std::string name = node.name;
        const bool fits = !name.empty() && name.find('.') == std::string::npos && !names_.contains(name);
        require(realize(std::move(node), options) == fits, "a node is made when its name is new", name);
        if (fits) {
            names_.insert(name);
            const vx::core::Node* made = tree_.find(options.fullName());
            require(made != nullptr && summarise(made->properties()) == summarise(options.properties),
                    "a node is as it was described", name);
        }
        require(tree_.nodes().size() == names_.size() &&
                    root_.settings.size() + root_.groups.size() == names_.size(),
                "a refused node leaves nothing", name);
    }

    template <class Node>
    bool realize(Node&& node, const SettingOptions& options)
    {
        try {
            if constexpr (std::is_same_v<Node, FactoryGroup>) {
                static_cast<void>(detail::addRealized(root_, std::move(node), options.properties));
            } else {
                detail::addRealized(root_, std::move(node), options.properties);
            }
            return true;
        } catch (const std::invalid_argument&) {
            return false;
        }
    }

    vx::core::SettingsTree tree_{"verdix"};
    FactoryGroup root_{nullptr, nullptr, tree_.root(), "verdix"};
    std::set<std::string> names_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Bytes bytes(data, size);
    Area area;
    while (!bytes.empty()) {
        area.addNext(bytes);
    }
    return 0;
}
