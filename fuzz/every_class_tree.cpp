#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>
#include <builder/values.hpp>

#include <fuzz/every_class_tree.hpp>
#include <stdexcept>

namespace fuzz {

namespace {

using namespace verdix::settings;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using internal::SettingValueValidator;
using Colour = ::settings::core::SettingValueValidator::Colour;

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
    addSetting(classes, "char", "FactoryValue", internal::charvec(std::string("text")));
    addSetting(classes, "cell", "FactoryValue", internal::cellstr({"a", "b"}));
    addSetting(classes, "none");
    addSetting(classes, "row", "FactoryValue", internal::makeRow<std::int32_t>(std::array{180, 45}));
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
    const SettingValueValidator range{{.range = {{.lower = -1, .upper = 1000}}}};
    addSetting(rules, "range", "FactoryValue", 1, "ValueValidator", range);
    addSetting(rules, "size", "ValueValidator", SettingValueValidator{{.size = {{.columns = 2}}}});
    addSetting(rules, "words", "FactoryValue", internal::charvec(std::string("short")), "ValueValidator",
               SettingValueValidator{{.allowedValues = {u"short", u"long"}, .maximumLength = 5}});
    addSetting(rules, "switch", "FactoryValue", internal::charvec(std::string("on")), "ValueValidator",
               SettingValueValidator{{.allowedValues = {u"on", u"off"}}});
    addSetting(rules, "list", "FactoryValue", internal::cellstr({}), "ValueValidator",
               SettingValueValidator{{.allowedValues = {u"a", u"b"}, .maximumLength = 3}});
    addSetting(rules, "element", "ValueValidator", SettingValueValidator{{.elementClass = ArrayType::UINT8}});
    addSetting(rules, "whole", "FactoryValue", internal::makeRow<std::int32_t>(std::array{0, 0, 255}),
               "ValueValidator", SettingValueValidator{{.colour = Colour::wholeNumbers}});
    addSetting(rules, "colour", "ValueValidator",
               SettingValueValidator{{.allowedValues = {u"red"}, .colour = Colour::normalised}});
    addSetting(rules, "called", "FactoryValue", 1, "ValidationFcn",
               makeCppValidator([](const auto&, const std::string&, const Array&) {
                   throw std::invalid_argument("is refused");
               }),
               "ErrorHandler", [](const std::string& name, const Array&) { throw std::runtime_error(name); });
}

void addTargets(FactoryGroup& root)
{
    FactoryGroup window = addGroup(root, "commandwindow");
    addSetting(window, "UseEightyColumnDisplayWidth", "FactoryValue", false);
    addSetting(window, "DisplayLineSpacing", "FactoryValue", internal::charvec(std::string("loose")));
    addSetting(window, "fixed", "FactoryValue", 1, "ReadOnly", true);
    addAlias(window, "alias", "verdix.class.double");
}

}  // namespace

vx::core::SettingsTree everyClassTree()
{
    vx::core::SettingsTree tree("verdix");
    FactoryGroup root(nullptr, nullptr, tree.root(), "verdix");
    addClasses(root);
    addRules(root);
    addTargets(root);
    return tree;
}

}  // namespace fuzz
