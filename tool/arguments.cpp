#include "arguments.hpp"

#include <CLI/CLI.hpp>
#include <boost/algorithm/string/join.hpp>

#include <cstddef>

namespace vx::tool {

namespace {

template <class Target>
CLI::Option& add(CLI::App& verb, const char* names, Target& target, const char* valueName, const char* help,
                 Need need)
{
    return *verb.add_option(names, target, help)->type_name(valueName)->required(need == Need::required);
}

}  // namespace

void describe(CLI::App& verb, const char* summary, const char* footer)
{
    verb.description(summary)->footer(footer);
}

void hide(CLI::App& verb)
{
    verb.group("");
}

void addOperand(CLI::App& verb, const char* name, std::string& target, Need need, const char* help)
{
    add(verb, name, target, "", help, need);
}

void addOperand(CLI::App& verb, const char* name, std::vector<std::string>& target, Need need,
                const char* help)
{
    add(verb, name, target, "", help, need);
}

void addOption(CLI::App& verb, const char* names, std::string& target, const char* valueName,
               const char* help, Need need)
{
    add(verb, names, target, valueName, help, need);
}

void addOption(CLI::App& verb, const char* names, int& target, int least, int most, const char* valueName,
               const char* help)
{
    add(verb, names, target, valueName, help, Need::optional).check(CLI::Range(least, most).description(""));
}

void addChoice(CLI::App& verb, const char* names, std::string& target, const std::vector<std::string>& words,
               const char* help, Need need)
{
    limitTo(add(verb, names, target, "", help, need), words);
}

void addFlag(CLI::App& verb, const char* names, bool& target, const char* help)
{
    verb.add_flag(names, target, help);
}

void limitTo(CLI::Option& option, const std::vector<std::string>& words)
{
    option.check(CLI::IsMember(words).description(""))->type_name(boost::algorithm::join(words, "|"));
}

std::vector<std::string> choicesOf(const CLI::Option& option)
{
    std::vector<std::string> words;
    const std::string type = option.get_type_name();
    std::size_t begin = 0;
    for (std::size_t bar = type.find('|'); bar != std::string::npos; bar = type.find('|', begin)) {
        words.push_back(type.substr(begin, bar - begin));
        begin = bar + 1;
    }
    if (!words.empty()) {
        words.push_back(type.substr(begin));
    }
    return words;
}

const CLI::App& wholeOf(const CLI::App& verb)
{
    return *verb.get_parent();
}

}  // namespace vx::tool
