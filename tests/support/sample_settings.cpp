#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>
#include <builder/values.hpp>

#include <foundation/feature/ifeature.hpp>

#include <initializer_list>
#include <stdexcept>
#include <tests/support/sample_settings.hpp>

namespace tests {

namespace {

using namespace verdix::settings;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using internal::cellstr;
using internal::SettingValueValidator;
using Colour = ::settings::core::SettingValueValidator::Colour;
using Words = std::vector<std::u16string>;

Array charvec(const char* characters)
{
    return internal::charvec(std::string(characters));
}

template <class T>
Array row(std::initializer_list<int> values)
{
    return internal::makeRow<T>(std::vector<int>(values));
}

SettingValueValidator range(double lower, double upper)
{
    return {{.range = {{lower, upper}}}};
}

SettingValueValidator oneOf(Words words)
{
    return {{.allowedValues = std::move(words)}};
}

FunctionDescriptor native(const char* library, const char* function)
{
    return {function, "C", library};
}

constexpr const char* logicalScalar = "verdix.settings.mustBeLogicalScalar";

void addClasses(FactoryGroup& root)
{
    FactoryGroup classes = addGroup(root, "class");
    addSetting(classes, "int8", "FactoryValue", internal::makeScalar<std::int8_t>(1));
    addSetting(classes, "int16", "FactoryValue", internal::makeScalar<std::int16_t>(1));
    addSetting(classes, "int32", "FactoryValue", internal::makeScalar<std::int32_t>(1));
    addSetting(classes, "int64", "FactoryValue", internal::makeScalar<std::int64_t>(1));
    addSetting(classes, "uint8", "FactoryValue", internal::makeScalar<std::uint8_t>(1));
    addSetting(classes, "uint16", "FactoryValue", internal::makeScalar<std::uint16_t>(1));
    addSetting(classes, "uint32", "FactoryValue", internal::makeScalar<std::uint32_t>(1));
    addSetting(classes, "uint64", "FactoryValue", internal::makeScalar<std::uint64_t>(1));
    addSetting(classes, "logical", "FactoryValue", true);
    addSetting(classes, "double", "FactoryValue", 1);
    addSetting(classes, "string", "FactoryValue", "text");
    addSetting(classes, "char", "FactoryValue", charvec("text"));
    addSetting(classes, "cell", "FactoryValue", cellstr({"a", "b"}));
    addSetting(classes, "none");
    addSetting(classes, "row", "FactoryValue", row<std::int32_t>({180, 45}));
    addSetting(classes, "matrix", "FactoryValue",
               foundation::verdixdata::ArrayFactory().createArray<double>({2, 3}));
}

void addRules(FactoryGroup& root)
{
    FactoryGroup rules = addGroup(root, "rule", "Hidden", true);
    for (const char* function : {"LogicalScalar", "StringScalar", "IntegerScalar", "NumericScalar"}) {
        const std::string validator = std::string("verdix.settings.mustBe") + function;
        addSetting(rules, function, "ValidationFcn", validator.c_str());
    }
    addSetting(rules, "range", "FactoryValue", 1, "ValueValidator", range(-1, 1000));
    addSetting(rules, "limit", "FactoryValue", 100, "ValueValidator",
               SettingValueValidator{{.range = {{.lower = 1}}}});
    addSetting(rules, "size", "ValueValidator", SettingValueValidator{{.size = {{.columns = 2}}}});
    addSetting(rules, "position", "ValueValidator",
               SettingValueValidator{{.range = {{-10000, 10000}}, .size = {{1, 4}}}});
    addSetting(rules, "colormap", "FactoryValue", row<double>({0, 0, 1}), "ValueValidator",
               SettingValueValidator{{.range = {{0, 1}}, .size = {{.columns = 3}}}});
    addSetting(rules, "words", "FactoryValue", charvec("short"), "ValueValidator",
               SettingValueValidator{{.allowedValues = {u"short", u"long"}, .maximumLength = 5}});
    addSetting(rules, "list", "FactoryValue", cellstr({}), "ValueValidator",
               SettingValueValidator{{.allowedValues = {u"a", u"b"}, .maximumLength = 3}});
    addSetting(rules, "pair", "FactoryValue", cellstr({"", ""}), "ValueValidator",
               SettingValueValidator{{.size = {{1, 2}}}});
    addSetting(rules, "element", "ValueValidator", SettingValueValidator{{.elementClass = ArrayType::UINT8}});
    addSetting(rules, "whole", "FactoryValue", row<std::int32_t>({0, 0, 255}), "ValueValidator",
               SettingValueValidator{{.colour = Colour::wholeNumbers}});
    addSetting(rules, "colour", "ValueValidator",
               SettingValueValidator{{.allowedValues = {u"red"}, .colour = Colour::normalised}});
    addSetting(rules, "called", "FactoryValue", 1, "ValidationFcn",
               makeCppValidator([](const auto&, const std::string&, const Array& value) {
                   if (value != internal::makeScalar<double>(1)) {
                       throw std::invalid_argument("is refused");
                   }
               }),
               "ErrorHandler", [](const std::string& name, const Array&) { throw std::runtime_error(name); });
}

void addCommandWindow(FactoryGroup& root)
{
    FactoryGroup window = addGroup(root, "commandwindow", "Hidden", false);
    addSetting(window, "WrapLines", "FactoryValue", false);
    addSetting(window, "UseEightyColumnDisplayWidth", "FactoryValue", false, "Hidden", false);
    addSetting(window, "SuppressCellBraces", "FactoryValue", false, "ValidationFcn", logicalScalar, "Hidden",
               true);
    addSetting(window, "NumberOfLinesInScrollBuffer", "FactoryValue", row<std::int32_t>({5000}),
               "ValueValidator", range(1000, 25000));
    addSetting(window, "DisplayLineSpacing", "FactoryValue", charvec("loose"), "ValueValidator",
               oneOf({u"loose", u"compact"}));
    addSetting(window, "NumericFormat", "FactoryValue", charvec("short"), "ValueValidator",
               oneOf({u"short", u"long", u"longG", u"hex", u"bank"}));
    addSetting(window, "WindowSize", "FactoryValue", row<std::int32_t>({180, 45}), "ValueValidator",
               range(1, 1000));
    addSetting(window, "fixed", "FactoryValue", 1, "ReadOnly", true);
    addAlias(window, "alias", "verdix.class.double");
}

void addAppearance(FactoryGroup& root)
{
    FactoryGroup colors = addGroup(root, "colors");
    const SettingValueValidator colour{{.colour = Colour::wholeNumbers}};
    addSetting(colors, "KeywordColor", "FactoryValue", row<std::int32_t>({14, 0, 255}), "ValueValidator",
               colour);
    addSetting(colors, "CommentColor", "FactoryValue", row<std::int32_t>({0, 128, 19}), "ValueValidator",
               colour);
    FactoryGroup fonts = addGroup(root, "fonts");
    FactoryGroup heading = addGroup(fonts, "heading");
    addSetting(heading, "Name", "FactoryValue", charvec("SansSerif"));
    addSetting(heading, "Style", "FactoryValue", cellstr({"bold"}), "ValidationFcn",
               native("libvxservices", "validateFontStyle"));
    addSetting(heading, "Size", "FactoryValue", charvec("20px"), "ValidationFcn",
               native("libvxservices", "validateFontSize"));
}

void addOthers(FactoryGroup& root)
{
    addSetting(root, "UserPath", "FactoryValue", charvec("$documents\\VERDIX"));
    addSetting(root, "dump", "ValidationFcn", logicalScalar);
    addAlias(root, "qorv", "qorv");
    FactoryGroup suggestions = addGroup(root, "suggestions");
    addSetting(suggestions, "ShowTips", "FactoryValue", true);
    addSetting(suggestions, "ShowAutomatically", "FactoryValue", true);
    FactoryGroup connector = addGroup(root, "connector");
    addSetting(connector, "InterfacesBlocklist", "FactoryValue", cellstr({}));
    FactoryGroup desktop = addGroup(root, "desktop", "Hidden", true);
    FactoryGroup workspace = addGroup(desktop, "workspace");
    addSetting(workspace, "MaximumArraySize", "FactoryValue", 1000, "ValidationFcn",
               native("libvxsavevars", "validateMaximumArraySizeValue"));
    FactoryGroup ui = addGroup(root, "ui");
    addSetting(ui, "webfigures", "FactoryValueFcn",
               native("libvxgraphics_state", "getDefaultFigureTypeForSetting"), "ValidationFcn",
               logicalScalar, "ReadOnly", true);
    addSetting(ui, "FileDialogs", "FactoryValue",
               foundation::feature::management::process::getDataPtr("webui")->value != 0);
}

}  // namespace

void SampleSettings::createTree(FactoryGroup& root)
{
    addClasses(root);
    addRules(root);
    addCommandWindow(root);
    addAppearance(root);
    addOthers(root);
}

void SampleSettings::getReleaseChanges(settings::core::ReleaseChangeTable& changes)
{
    const auto move = [](std::string from, std::string to) {
        return settings::core::SettingsFileChange("move", {std::move(from)}, {std::move(to)});
    };
    const auto remove = [](std::string path) {
        return settings::core::SettingsFileChange("remove", {std::move(path)}, {});
    };
    const std::string window = "verdix.commandwindow.";
    const std::string keyboard = "verdix.keyboard.suggestions";
    const std::string editor = "verdix.editor.suggestions";
    changes[0] = {"R2020b", false, {move(window + "NumericDisplay", window + "DisplayLineSpacing")}};
    changes[1] = {"R2021a",
                  false,
                  {remove("verdix.findfiles.GoToFileEnabled"),
                   move(window + "EightyColumns", window + "UseEightyColumnDisplayWidth")}};
    changes[2] = {"R2023a",
                  false,
                  {move(keyboard + ".ShowAutomatically", editor + ".ShowAutomatically"), remove(keyboard)}};
    changes[3] = {"R2025b",
                  false,
                  {move(editor + ".ShowTips", "verdix.suggestions.ShowTips"),
                   move(editor + ".ShowAutomatically", "verdix.suggestions.ShowAutomatically"),
                   move("verdix.connector.InterfacesBlacklist", "verdix.connector.InterfacesBlocklist")}};
    changes[4] = {"R2026a", false, {remove(editor), remove("verdix.desktop.help.SingleSource")}};
}

void SampleSettings::getSettingPathList(std::vector<std::string>& paths)
{
    paths.emplace_back("verdix.UserPath");
}

vx::core::SettingsTree sampleTree()
{
    SampleSettings settings;
    return vx::core::loadTree(settings);
}

}  // namespace tests
