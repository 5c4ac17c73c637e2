// Nodes described by any sequence of options, names and types: each option is written as it was given or
// refused with nothing changed, and each node is made whole or not at all.

#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>
#include <builder/values.hpp>
#include <settings_core/settings_tree.hpp>
#include <settings_core/value_text.hpp>

#include <array>
#include <fuzz/fuzzing.hpp>
#include <map>
#include <set>
#include <stdexcept>
#include <variant>
#include <vector>

namespace {

using namespace verdix::settings;
using foundation::verdixdata::Array;
using fuzz::require;
using internal::SettingValueValidator;
using settings::core::detail::FactorySettingProperties;
using settings::core::detail::WritableFlag;

using Records = std::vector<SettingValueValidator>;

constexpr std::array<const char*, 8> names = {"Hidden",         "ReadOnly",      "AdditionalFile",
                                              "FactoryValue",   "ValidationFcn", "FactoryValueFcn",
                                              "ValueValidator", "ErrorHandler"};

/// What each option of a node is, as text: "" where it was not given.
using Summary = std::map<std::string, std::string>;

std::string show(const WritableFlag& flag)
{
    return !flag.isWritten() ? "" : flag.value() ? "true" : "false";
}

std::string show(const Array& value)
{
    return value.isAssigned() ? vx::core::shapeText(value) + ": " + vx::core::valueText(value) : "";
}

std::string show(std::span<const SettingValueValidator> records)
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
    const auto text = [&function](const auto& named) -> std::string {
        if constexpr (requires { named.scope(); }) {
            return std::to_string(function.index()) + ' ' + named.scope() + ' ' + named.function();
        }
        return "";
    };
    return std::visit(text, function);
}

Summary summarise(const FactorySettingProperties& properties)
{
    return {{"Hidden", show(properties.visible)},
            {"ReadOnly", show(properties.readOnly)},
            {"AdditionalFile", properties.additionalFile ? "true" : ""},
            {"FactoryValue", show(properties.factoryValue)},
            {"ValidationFcn", show(properties.validator)},
            {"FactoryValueFcn", show(properties.runTimeDefault)},
            {"ValueValidator", show(properties.valueValidators)},
            {"ErrorHandler", properties.errorHandler ? "true" : ""}};
}

/// Calls give(value, takers) with one of each type that some option takes, or of one that none does. The
/// takers are the options that take it, as they then are; `records` are those of the node before.
template <class Give>
void withValueIn(fuzz::Bytes& bytes, const std::string& records, Give give)
{
    constexpr std::array<const char*, 4> languages = {"C", "Java", "c", ""};
    const auto text = [&bytes] { return std::string(bytes.until('\0')); };
    const auto record = [&bytes] { return SettingValueValidator{.maximumLength = bytes.below(256)}; };
    switch (bytes.below(10)) {
    case 0: {
        const bool flag = bytes.below(2) == 1;
        const std::string shown = flag ? "true" : "false";
        return give(flag, {{"Hidden", flag ? "false" : "true"},
                           {"ReadOnly", shown},
                           {"AdditionalFile", flag ? "true" : ""},
                           {"FactoryValue", "logical, 1-by-1: " + shown}});
    }
    case 1: {
        const int number = static_cast<int>(bytes.below(256)) - 128;
        return give(number, {{"FactoryValue", "double, 1-by-1: " + std::to_string(number)}});
    }
    case 2: {
        std::string ascii = text();
        std::erase_if(ascii, [](char c) { return c < 0; });
        const std::size_t dot = ascii.rfind('.');
        const std::string function = ' ' + ascii.substr(0, dot) + ' ' + ascii.substr(dot + 1);
        return give(ascii.c_str(), {{"FactoryValue", "string, 1-by-1: " + ascii},
                                    {"ValidationFcn", '1' + function},
                                    {"FactoryValueFcn", '2' + function}});
    }
    case 3: {
        const Array cell = internal::cellstr({text(), text()});
        return give(cell, {{"FactoryValue", show(cell)}});
    }
    case 4: {
        const std::string language = languages[bytes.below(languages.size())];
        const std::string function = text();
        const FunctionDescriptor named{function, language, text()};
        const std::string shown = ' ' + named.owner + ' ' + function;
        if (language != "C" && language != "Java") {
            return give(named, {});
        }
        return give(named, {{"ValidationFcn", (language == "C" ? '2' : '3') + shown},
                            {"FactoryValueFcn", (language == "C" ? '1' : '3') + shown}});
    }
    case 5:
        return give(makeCppValidator([](const auto&, const std::string&, const Array&) {}),
                    {{"ValidationFcn", "4 verdix function"}});
    case 6: {
        const SettingValueValidator added = record();
        return give(added, {{"ValueValidator", records + show(Records{added})}});
    }
    case 7: {
        const Records all{record(), record()};
        return give(all, {{"ValueValidator", show(all)}});
    }
    case 8:
        return give([](const std::string&, const Array&) {}, {{"ErrorHandler", "true"}});
    default:
        return give(1.5, {});
    }
}

/// Gives the node an option; whether it took it.
bool applyNext(SettingOptions& options, fuzz::Bytes& bytes)
{
    const std::size_t choice = bytes.below(names.size() + 1);
    const std::string name = choice < names.size() ? names[choice] : std::string(bytes.until('\0'));
    Summary after = summarise(options.properties);
    bool isTaken = true;
    withValueIn(bytes, after["ValueValidator"], [&](auto value, const Summary& takers) {
        const auto taker = takers.find(name);
        const bool fits = taker != takers.end();
        if (fits) {
            after[name] = taker->second;
        }
        try {
            applyOption(options, name, std::move(value));
        } catch (const std::logic_error& error) {
            isTaken = false;
            const bool isOwnText =
                name == "FactoryValue" && error.what() == std::string_view("Value is invalid.");
            require(isOwnText || std::string_view(error.what()).starts_with(options.fullName() + ": "),
                    "a refusal names the setting", error.what());
        }
        require(isTaken == fits, "an option takes its own types", name);
        require(summarise(options.properties) == after, "an option changes itself alone, or nothing", name);
    });
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
        const bool isGroup = bytes.below(2) != 0;
        SettingOptions options(root_, name);
        for (std::size_t left = bytes.below(8); left > 0; --left) {
            if (!applyNext(options, bytes)) {
                return;
            }
        }
        add(name, options, isGroup);
    }

private:
    void add(const std::string& name, const SettingOptions& options, bool isGroup)
    {
        const std::string path = options.fullName();
        const bool isName = !name.empty() && name.find('.') == std::string::npos;
        const bool isNew = isName && names_.insert(name).second;
        bool isMade = true;
        try {
            if (isGroup) {
                static_cast<void>(detail::makeGroup(root_, std::string(name), options.properties));
            } else {
                detail::makeSetting(root_, std::string(name), options.properties);
            }
        } catch (const std::invalid_argument&) {
            isMade = false;
        }
        require(isMade == isNew, "a node is made when its name is new", name);
        const auto* made = tree_.find(path);
        require(!isMade || summarise(made->properties()) == summarise(options.properties),
                "a node is as it was described", name);
        require(tree_.nodes().size() == names_.size() &&
                    root_.settings.size() + root_.groups.size() == names_.size(),
                "a refused node leaves nothing", name);
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
