// Times how other libraries load the same settings, as plain values, from files that they wrote themselves.
// Destroying the loaded objects is not timed.

#include <benchmark/benchmark.h>
#include <boost/json.hpp>
#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include <QSettings>
#include <QStringList>
#include <bench/live_bundle.hpp>
#include <bench/plain_settings.hpp>
#include <bench/schema_folder.hpp>
#include <bench/temporary_folder.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#define G_SETTINGS_ENABLE_BACKEND
#include <gio/gio.h>
#include <gio/gsettingsbackend.h>

namespace bench {

namespace {

struct Unref
{
    void operator()(GSettings* object) const { g_object_unref(object); }
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
    void operator()(GSettingsSchemaSource* source) const { g_settings_schema_source_unref(source); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
};

template <class T>
using Owned = std::unique_ptr<T, Unref>;

/// The settings in the formats of all libraries.
struct Peers
{
    TemporaryFolder folder;
    std::vector<PlainSetting> settings = plainSettings(vx::core::loadTree(liveLoader()));
    std::vector<std::string> groups;
    std::string json;
    std::string info;
    /// More copies than QSettings caches, so that every load parses a file.
    std::vector<QString> iniFiles;

    Peers();

    [[nodiscard]] Owned<GSettingsSchemaSource> schemaSource() const
    {
        return Owned<GSettingsSchemaSource>(
            g_settings_schema_source_new_from_directory(folder.path().c_str(), nullptr, TRUE, nullptr));
    }
};

QVariant qtValue(const PlainValue& value)
{
    return std::visit(
        []<class T>(const T& each) -> QVariant {
            if constexpr (std::is_same_v<T, std::string>) {
                return QString::fromStdString(each);
            } else if constexpr (std::is_same_v<T, std::vector<std::string>>) {
                QStringList list;
                for (const std::string& string : each) {
                    list.append(QString::fromStdString(string));
                }
                return list;
            } else if constexpr (std::is_arithmetic_v<T>) {
                return each;
            } else {
                return QVariantList(each.begin(), each.end());
            }
        },
        value);
}

void writeIni(const std::vector<PlainSetting>& settings, const QString& file)
{
    QSettings ini(file, QSettings::IniFormat);
    for (const PlainSetting& setting : settings) {
        ini.setValue(QString::fromStdString(setting.path()).replace('.', '/'), qtValue(setting.value));
    }
}

boost::property_tree::ptree propertyTree(const std::vector<PlainSetting>& settings)
{
    boost::property_tree::ptree tree;
    for (const PlainSetting& setting : settings) {
        std::visit(
            [&]<class T>(const T& each) {
                if constexpr (std::is_arithmetic_v<T> || std::is_same_v<T, std::string>) {
                    tree.put(setting.path(), each);
                } else {
                    auto& list = tree.put(setting.path(), "");
                    for (const auto& element : each) {
                        list.add("item", element);
                    }
                }
            },
            setting.value);
    }
    return tree;
}

Peers::Peers()
{
    writeSchemaFolder(settings, folder.path());
    boost::json::object object;
    for (const PlainSetting& setting : settings) {
        if (groups.empty() || groups.back() != setting.group) {
            groups.push_back(setting.group);
        }
        object.emplace(
            setting.path(),
            std::visit([](const auto& each) { return boost::json::value_from(each); }, setting.value));
    }
    std::ranges::sort(groups);
    groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
    json = boost::json::serialize(object);
    std::ostringstream stream;
    boost::property_tree::write_info(stream, propertyTree(settings));
    info = stream.str();
    for (int copy = 0; copy < 64; ++copy) {
        iniFiles.push_back(
            QString::fromStdString((folder.path() / (std::to_string(copy) + ".ini")).string()));
        writeIni(settings, iniFiles.back());
    }
}

const Peers& peers()
{
    static const Peers all;
    return all;
}

template <class Load>
void timeLoading(benchmark::State& state, Load load)
{
    for ([[maybe_unused]] auto step : state) {
        auto loaded = std::make_unique<decltype(load())>(load());
        state.PauseTiming();
        loaded.reset();
        state.ResumeTiming();
    }
}

/// Opens the compiled schema, creates a GSettings for each group and reads the default of each key.
void gsettings(benchmark::State& state)
{
    const Peers& all = peers();
    GSettingsBackend* backend = g_memory_settings_backend_new();
    timeLoading(state, [&] {
        const auto source = all.schemaSource();
        std::vector<Owned<GSettings>> loaded;
        std::vector<Owned<GVariant>> values;
        for (const std::string& group : all.groups) {
            const Owned<GSettingsSchema> schema(
                g_settings_schema_source_lookup(source.get(), group.c_str(), FALSE));
            loaded.emplace_back(g_settings_new_full(schema.get(), backend, nullptr));
            gchar** keys = g_settings_schema_list_keys(schema.get());
            for (gchar** key = keys; *key != nullptr; ++key) {
                values.emplace_back(g_settings_get_default_value(loaded.back().get(), *key));
            }
            g_strfreev(keys);
        }
        if (values.size() != all.settings.size()) {
            state.SkipWithError("not all keys were read");
        }
        return std::pair(std::move(loaded), std::move(values));
    });
    g_object_unref(backend);
}

/// Calls g_settings_get_default_value only; the GSettings objects exist already.
void gsettingsFind(benchmark::State& state)
{
    const Peers& all = peers();
    const auto source = all.schemaSource();
    GSettingsBackend* backend = g_memory_settings_backend_new();
    std::vector<std::pair<Owned<GSettings>, std::string>> keys;
    for (const PlainSetting& setting : all.settings) {
        const Owned<GSettingsSchema> schema(
            g_settings_schema_source_lookup(source.get(), setting.group.c_str(), FALSE));
        keys.emplace_back(g_settings_new_full(schema.get(), backend, nullptr), setting.name);
    }
    std::size_t next = 0;
    for ([[maybe_unused]] auto step : state) {
        const auto& [group, key] = keys[next];
        const Owned<GVariant> value(g_settings_get_default_value(group.get(), key.c_str()));
        benchmark::DoNotOptimize(value.get());
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
    keys.clear();
    g_object_unref(backend);
}

void qsettings(benchmark::State& state)
{
    const Peers& all = peers();
    std::size_t next = 0;
    timeLoading(state, [&] {
        auto ini = std::make_unique<QSettings>(all.iniFiles[next], QSettings::IniFormat);
        next = (next + 1) % all.iniFiles.size();
        const QStringList keys = ini->allKeys();
        std::vector<QVariant> values;
        for (const QString& key : keys) {
            values.push_back(ini->value(key));
        }
        if (values.size() != all.settings.size()) {
            state.SkipWithError("not all keys were read");
        }
        return std::pair(std::move(ini), std::move(values));
    });
}

void boostJson(benchmark::State& state)
{
    timeLoading(state, [&] { return boost::json::parse(peers().json); });
}

void nlohmannJson(benchmark::State& state)
{
    timeLoading(state, [&] { return nlohmann::json::parse(peers().json); });
}

void propertyTreeInfo(benchmark::State& state)
{
    timeLoading(state, [&] {
        std::istringstream stream(peers().info);
        boost::property_tree::ptree tree;
        boost::property_tree::read_info(stream, tree);
        return tree;
    });
}

BENCHMARK(gsettings)->Name("peer/GSettings")->Unit(benchmark::kMicrosecond);
BENCHMARK(qsettings)->Name("peer/QSettings")->Unit(benchmark::kMicrosecond);
BENCHMARK(boostJson)->Name("peer/Boost.JSON")->Unit(benchmark::kMicrosecond);
BENCHMARK(nlohmannJson)->Name("peer/nlohmann JSON")->Unit(benchmark::kMicrosecond);
BENCHMARK(propertyTreeInfo)->Name("peer/Boost.PropertyTree")->Unit(benchmark::kMicrosecond);
BENCHMARK(gsettingsFind)->Name("find/GSettings");

}  // namespace

}  // namespace bench
