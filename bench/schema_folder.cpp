#include <bench/schema_folder.hpp>
#include <cstdlib>
#include <fstream>
#include <glib.h>
#include <map>
#include <memory>
#include <stdexcept>

namespace bench {

namespace {

GVariant* variantOf(bool value)
{
    return g_variant_new_boolean(value ? TRUE : FALSE);
}

GVariant* variantOf(int value)
{
    return g_variant_new_int32(value);
}

GVariant* variantOf(double value)
{
    return g_variant_new_double(value);
}

GVariant* variantOf(const std::string& value)
{
    return g_variant_new_string(value.c_str());
}

template <class T>
constexpr const char* arrayType = "ai";
template <>
constexpr const char* arrayType<double> = "ad";
template <>
constexpr const char* arrayType<std::string> = "as";

template <class T>
GVariant* variantOf(const std::vector<T>& values)
{
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE(arrayType<T>));
    for (const T& value : values) {
        g_variant_builder_add_value(&builder, variantOf(value));
    }
    return g_variant_builder_end(&builder);
}

std::string keyElement(const PlainSetting& setting)
{
    GVariant* value = std::visit([](const auto& each) { return variantOf(each); }, setting.value);
    gchar* printed = g_variant_print(value, FALSE);
    gchar* element = g_markup_printf_escaped("    <key name=\"%s\" type=\"%s\"><default>%s</default></key>\n",
                                             setting.name.c_str(), g_variant_get_type_string(value), printed);
    std::string result(element);
    g_free(element);
    g_free(printed);
    g_variant_unref(value);
    return result;
}

}  // namespace

void writeSchemaFolder(std::span<const PlainSetting> settings, const std::filesystem::path& folder)
{
    std::map<std::string, std::string> groups;
    for (const PlainSetting& setting : settings) {
        groups[setting.group] += keyElement(setting);
    }
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / "settings.gschema.xml");
    file << "<schemalist>\n";
    for (const auto& [group, keys] : groups) {
        std::string path = "/" + group + "/";
        std::ranges::replace(path, '.', '/');
        file << "  <schema id=\"" << group << "\" path=\"" << path << "\">\n" << keys << "  </schema>\n";
    }
    file << "</schemalist>\n";
    file.close();
    // GSettings rejects names in upper camel case without --allow-any-name.
    const std::string command = "glib-compile-schemas --strict --allow-any-name '" + folder.string() + "'";
    if (!file || std::system(command.c_str()) != 0) {
        throw std::runtime_error("cannot compile a schema in " + folder.string());
    }
}

}  // namespace bench
