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

template <class... Integers>
void addIntegers(FactoryGroup& group)
{
    const auto add = [&]<class T>(std::type_identity<T>) {
        const std::string bits = std::to_string(8 * sizeof(T));
        addSetting(group, (std::is_signed_v<T> ? "int" : "uint") + bits, "FactoryValue",
                   internal::makeScalar<T>(1));
    };
    (add(std::type_identity<Integers>()), ...);
}

void addClasses(FactoryGroup& root)
{
    FactoryGroup classes = addGroup(root, "class");
    addIntegers<std::int8_t, std::int16_t, std::int32_t, std::int64_t>(classes);
    addIntegers<std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t>(classes);
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
    const SettingValueValidator range{.range = {{.lower = -1, .upper = 1000}}};
    addSetting(rules, "range", "FactoryValue", 1, "ValueValidator", range);
    addSetting(rules, "size", "ValueValidator", SettingValueValidator{.size = {{.rows = 2, .columns = 2}}});
    addSetting(rules, "words", "FactoryValue", internal::charvec(std::string("short")), "ValueValidator",
               SettingValueValidator{.allowedValues = {u"short", u"long"}, .maximumLength = 5});
    addSetting(rules, "list", "FactoryValue", internal::cellstr({}), "ValueValidator",
               SettingValueValidator{.allowedValues = {u"a", u"b"}, .maximumLength = 3});
    addSetting(rules, "element", "ValueValidator", SettingValueValidator{.elementClass = ArrayType::UINT8});
    addSetting(rules, "whole", "FactoryValue", internal::makeRow<std::int32_t>(std::array{0, 0, 255}),
               "ValueValidator", SettingValueValidator{.colour = Colour::wholeNumbers});
    addSetting(rules, "colour", "ValueValidator",
               SettingValueValidator{.allowedValues = {u"red"}, .colour = Colour::normalised});
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
