#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>

#include <foundation/feature/ifeature.hpp>

#include <stdexcept>
#include <tests/support/sample_settings.hpp>
#include <tests/support/values.hpp>

namespace tests {

namespace {

using namespace verdix::settings;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using Validators = std::vector<internal::SettingValueValidator>;
using Colour = settings::core::SettingValueValidator::Colour;

/// Without a factory value if `value` is unassigned.
void add(FactoryGroup& group, const char* name, Array value, Validators validators = {})
{
    addSetting(group, name, "FactoryValue", std::move(value), "ValueValidator", std::move(validators));
}

FunctionDescriptor native(const char* library, const char* function)
{
    return {function, "C", library};
}

constexpr const char* logicalScalar = "verdix.settings.mustBeLogicalScalar";

void addClasses(FactoryGroup& root)
{
    FactoryGroup classes = addGroup(root, "class");
    add(classes, "int8", scalar<std::int8_t>(1));
    add(classes, "int16", scalar<std::int16_t>(1));
    add(classes, "int32", scalar<std::int32_t>(1));
    add(classes, "int64", scalar<std::int64_t>(1));
    add(classes, "uint8", scalar<std::uint8_t>(1));
    add(classes, "uint16", scalar<std::uint16_t>(1));
    add(classes, "uint32", scalar<std::uint32_t>(1));
    add(classes, "uint64", scalar<std::uint64_t>(1));
    add(classes, "logical", scalar(true));
    add(classes, "double", scalar(1.0));
    add(classes, "string", string("text"));
    add(classes, "char", text("text"));
    add(classes, "cell", texts({"a", "b"}));
    add(classes, "none", {});
    add(classes, "row", row<std::int32_t>({180, 45}));
    add(classes, "matrix", matrix<double>(2, 3, {}));
}

void addRules(FactoryGroup& root)
{
    FactoryGroup rules = addGroup(root, "rule", "Hidden", true);
    for (const char* function : {"LogicalScalar", "StringScalar", "IntegerScalar", "NumericScalar"}) {
        const std::string validator = std::string("verdix.settings.mustBe") + function;
        addSetting(rules, function, "ValidationFcn", validator.c_str());
    }
    add(rules, "range", scalar(1.0), {{{.range = {{-1, 1000}}}}});
    add(rules, "limit", scalar(100.0), {{{.range = {{.lower = 1}}}}});
    add(rules, "size", {}, {{{.size = {{.columns = 2}}}}});
    add(rules, "position", {}, {{{.range = {{-10000, 10000}}, .size = {{1, 4}}}}});
    add(rules, "colormap", row<double>({0, 0, 1}), {{{.range = {{0, 1}}, .size = {{.columns = 3}}}}});
    add(rules, "words", text("short"), {{{.allowedValues = {u"short", u"long"}, .maximumLength = 5}}});
    add(rules, "text", text("text"), {{{.maximumLength = 5}}});
    add(rules, "switch", text("on"), {{{.allowedValues = {u"on", u"off"}}}});
    add(rules, "list", texts({}), {{{.allowedValues = {u"a", u"b"}, .maximumLength = 3}}});
    add(rules, "pair", texts({"", ""}), {{{.size = {{1, 2}}}}});
    add(rules, "element", {}, {{{.elementClass = ArrayType::UINT8}}});
    add(rules, "whole", row<std::int32_t>({0, 0, 255}), {{{.colour = Colour::wholeNumbers}}});
    add(rules, "colour", {}, {{{.allowedValues = {u"red"}, .colour = Colour::normalised}}});
    addSetting(rules, "called", "FactoryValue", 1, "ValidationFcn",
               makeCppValidator([](const auto&, const std::string&, const Array& value) {
                   if (value != scalar(1.0)) {
                       throw std::invalid_argument("is refused");
                   }
               }),
               "ErrorHandler", [](const std::string& name, const Array&) { throw std::runtime_error(name); });
}

void addCommandWindow(FactoryGroup& root)
{
    FactoryGroup window = addGroup(root, "commandwindow", "Hidden", false);
    add(window, "WrapLines", scalar(false));
    add(window, "UseEightyColumnDisplayWidth", scalar(false));
    addSetting(window, "SuppressCellBraces", "FactoryValue", false, "ValidationFcn", logicalScalar, "Hidden",
               true);
    add(window, "NumberOfLinesInScrollBuffer", scalar<std::int32_t>(5000), {{{.range = {{1000, 25000}}}}});
    add(window, "DisplayLineSpacing", text("loose"), {{{.allowedValues = {u"loose", u"compact"}}}});
    add(window, "NumericFormat", text("short"),
        {{{.allowedValues = {u"short", u"long", u"longG", u"hex", u"bank"}}}});
    add(window, "WindowSize", row<std::int32_t>({180, 45}), {{{.range = {{1, 1000}}}}});
    addSetting(window, "fixed", "FactoryValue", 1, "ReadOnly", true);
    addAlias(window, "alias", "verdix.class.double");
}

void addAppearance(FactoryGroup& root)
{
    FactoryGroup colors = addGroup(root, "colors");
    add(colors, "KeywordColor", row<std::int32_t>({14, 0, 255}), {{{.colour = Colour::wholeNumbers}}});
    add(colors, "CommentColor", row<std::int32_t>({0, 128, 19}), {{{.colour = Colour::wholeNumbers}}});
    FactoryGroup fonts = addGroup(root, "fonts");
    FactoryGroup heading = addGroup(fonts, "heading");
    add(heading, "Name", text("SansSerif"));
    add(heading, "Style", texts({"bold"}));
    addSetting(heading, "Size", "FactoryValue", text("20px"), "ValidationFcn",
               native("libvxservices", "validateFontSize"));
}

void addOthers(FactoryGroup& root)
{
    add(root, "UserPath", text("$documents\\VERDIX"));
    addSetting(root, "dump", "ValidationFcn", logicalScalar);
    addAlias(root, "qorv", "qorv");
    FactoryGroup aliases = addGroup(root, "alias");
    addAlias(aliases, "First", "verdix.alias.Second");
    addAlias(aliases, "Second", "verdix.rule.words");
    addAlias(aliases, "Round", "verdix.alias.About");
    addAlias(aliases, "About", "verdix.alias.Round");
    FactoryGroup suggestions = addGroup(root, "suggestions");
    add(suggestions, "ShowTips", scalar(true));
    add(suggestions, "ShowAutomatically", scalar(true));
    FactoryGroup connector = addGroup(root, "connector");
    add(connector, "InterfacesBlocklist", texts({}));
    FactoryGroup web = addGroup(root, "web");
    add(web, "AccessToken", text(""));
    add(web, "NeedsToken", scalar(false));
    FactoryGroup desktop = addGroup(root, "desktop", "Hidden", true);
    FactoryGroup workspace = addGroup(desktop, "workspace");
    addSetting(workspace, "MaximumArraySize", "FactoryValue", 1000, "ValidationFcn",
               native("libvxsavevars", "validateMaximumArraySizeValue"));
    FactoryGroup ui = addGroup(root, "ui");
    addSetting(ui, "webfigures", "FactoryValueFcn",
               native("libvxgraphics_state", "getDefaultFigureTypeForSetting"), "ReadOnly", true);
    const int webUi = foundation::feature::management::process::getDataPtr("webui")->value;
    add(ui, "FileDialogs", scalar(webUi != 0));
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
    using Changes = std::vector<settings::core::SettingsFileChange>;
    const auto move = [](const std::string& from, const std::string& to) {
        return settings::core::SettingsFileChange("move", {"verdix." + from}, {"verdix." + to});
    };
    const auto remove = [](const std::string& path) {
        return settings::core::SettingsFileChange("remove", {"verdix." + path}, {});
    };
    std::uint64_t index = 0;
    const auto release = [&](const char* name, Changes made) { changes[index++] = {name, false, made}; };
    release("R2020b", {move("commandwindow.NumericDisplay", "commandwindow.DisplayLineSpacing")});
    release("R2021a", {remove("findfiles.GoToFileEnabled"),
                       move("commandwindow.EightyColumns", "commandwindow.UseEightyColumnDisplayWidth")});
    release("R2023a", {move("keyboard.suggestions.ShowAutomatically", "editor.suggestions.ShowAutomatically"),
                       remove("keyboard.suggestions")});
    release("R2025b", {move("editor.suggestions.ShowTips", "suggestions.ShowTips"),
                       move("editor.suggestions.ShowAutomatically", "suggestions.ShowAutomatically"),
                       move("connector.InterfacesBlacklist", "connector.InterfacesBlocklist")});
    release("R2026a", {remove("editor.suggestions"), remove("desktop.help.SingleSource")});
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
