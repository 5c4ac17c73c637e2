#include <tree/editor.hpp>
#include <tree/vocabulary.hpp>

#include <initializer_list>

namespace verdix::settings::tree {

namespace {

struct TokenColour
{
    const char* name;
    Rgb value;
};

// Colours of several languages. Both "String" and "Strings" are needed, because the readers of each language
// expect one of them.
constexpr TokenColour keyword{"KeywordColor", {14, 0, 255}};
constexpr TokenColour comment{"CommentColor", {0, 128, 19}};
constexpr TokenColour string{"StringColor", {167, 9, 245}};
constexpr TokenColour strings{"StringsColor", {167, 9, 245}};
constexpr TokenColour characters{"CharactersColor", {209, 4, 139}};
constexpr TokenColour property{"PropertyColor", {2, 120, 128}};
constexpr TokenColour error{"ErrorColor", {225, 27, 20}};

constexpr std::initializer_list<TokenColour> hardwareColours{
    keyword, comment, string, {"OperatorColor", {139, 102, 6}}};
constexpr std::initializer_list<TokenColour> cColours{
    keyword, comment, strings, {"PreprocessorColor", {139, 102, 6}}, characters};
constexpr std::initializer_list<TokenColour> scriptColours{keyword, strings, comment, property};
constexpr std::initializer_list<TokenColour> quadraneColours{
    keyword,
    string,
    {"UnterminatedStringColor", {144, 38, 34}},
    comment,
    {"ErrorColor", {255, 0, 0}},  // a purer red than elsewhere
};
constexpr std::initializer_list<TokenColour> vrmlColours{
    keyword,
    string,
    comment,
    {"Node_keywordColor", {23, 118, 165}},
    {"Field_keywordColor", {97, 97, 97}},
    {"Data_type_keywordColor", {141, 31, 216}},
    {"Terminal_symbolColor", {209, 4, 139}},
};
constexpr std::initializer_list<TokenColour> markupColours{
    {"AttributeNameColor", {133, 22, 209}},
    {"AttributeValueColor", {167, 9, 245}},
    {"CdataSectionColor", {160, 82, 45}},
    {"CharacterColor", {209, 4, 139}},
    comment,
    {"DoctypeDeclarationColor", {12, 2, 175}},
    error,
    {"TagColor", {14, 0, 255}},
    {"ProcessingInstructionColor", {16, 66, 128}},
};

struct Language
{
    const char* name;
    const char* extensions;  // file name extensions, without dots, separated by ";"; null for no setting
    std::initializer_list<TokenColour> colours;
    bool indents = true;
    bool coloursLast = false;
};

void addLanguage(FactoryGroup& language, const Language& added)
{
    auto group = addGroup(language, added.name);
    const auto addColours = [&] {
        for (const auto& [name, value] : added.colours) {
            addColour(group, name, value);
        }
    };

    addCharvec(group, "SyntaxHighlightingColors", "", Hidden);
    if (!added.coloursLast) {
        addColours();
    }
    addLogical(group, "EnableSyntaxHighlighting", true);
    if (added.indents) {
        addCharvec(group, "SmartIndentWhileTyping", "SmartIndent");
    }
    if (added.coloursLast) {
        addColours();
    }
    if (added.extensions) {
        addCharvec(group, "Extensions", added.extensions, Hidden);
    }
}

void buildOwnLanguage(FactoryGroup& language)
{
    auto verdix = addGroup(language, "verdix", Visible);
    addLogical(verdix, "EnableSyntaxHighlighting", true);
    addLogical(verdix, "EnableVariableAndFunctionRenaming", true);
    addCharvec(verdix, "FunctionIndentingFormat", "MixedFunctionIndent");
    addCharvec(verdix, "SmartIndentWhileTyping", "SmartIndent");
    addCharvec(verdix, "Extensions", "m;vdx", Hidden);

    auto comments = addGroup(verdix, "comments");
    addLogical(comments, "FromCommentStart", false);
    addInteger(comments, "MaxWidth", 75);
    addLogical(comments, "WrapAutomatically", true);
}

// Unlike the colours of other languages, these are explicitly visible.
void buildMarkdown(FactoryGroup& language)
{
    auto markdown = addGroup(language, "markdown", Visible);
    addCharvec(markdown, "SyntaxHighlightingColors", "", Hidden);
    addColour(markdown, "HeadingColor", {192, 76, 11}, Visible);
    addColour(markdown, "HorizontalRuleColor", {192, 76, 11}, Visible);
    addColour(markdown, "ListColor", {14, 0, 255}, Visible);
    addColour(markdown, "BoldColor", {14, 0, 255}, Visible);
    addColour(markdown, "ItalicColor", {14, 0, 255}, Visible);
    addColour(markdown, "CodeBlockColor", {14, 0, 255}, Visible);
    addColour(markdown, "LinkColor", {17, 113, 190}, Visible);
    addColour(markdown, "HtmlColor", {17, 113, 190}, Visible);
    addColour(markdown, "CommentColor", {0, 128, 19}, Visible);
    addColour(markdown, "BlockQuoteColor", {0, 128, 19}, Visible);
    addLogical(markdown, "EnableSyntaxHighlighting", true);
    addCharvec(markdown, "Extensions", "md", Hidden);
    addLogical(markdown, "ShowPreview", true);
}

}  // namespace

void buildEditorLanguages(FactoryGroup& editor)
{
    auto language = addGroup(editor, "language");
    buildOwnLanguage(language);
    addLanguage(language, {.name = "tlc",
                           .extensions = "tlc;cgt",
                           .colours = {keyword, comment, strings, {"MacroColor", {16, 66, 128}}},
                           .coloursLast = true});
    addLanguage(language, {"vhdl", "vhd;vhdl", hardwareColours, /*indents=*/false, /*coloursLast=*/true});
    addLanguage(language, {"verilog", "v;sv", hardwareColours, /*indents=*/false, /*coloursLast=*/true});
    addLanguage(language, {"c", "c", cColours});
    addLanguage(language, {"cpp", "c;cpp;h;hpp;cu;cuh", cColours});
    addLanguage(language, {"xml", "xml;xsl;wsdl;arxml;x3d", markupColours});
    addLanguage(language, {"html", "html;htm;shtml", markupColours});
    addLanguage(language, {"quadrane", "ssc", quadraneColours});
    addLanguage(language, {"java", "java", {characters, comment, keyword, strings}});
    addLanguage(language, {"javascript", "js", scriptColours});
    buildMarkdown(language);
    addLanguage(language, {"typescript", "ts", scriptColours});
    addLanguage(language, {"json", "json", scriptColours});
    addLanguage(language, {"python", "py", {keyword, strings, comment, error}});
    addLanguage(language, {"toml", nullptr, {property, string, keyword, comment}, /*indents=*/false});
    addLanguage(language, {"yaml", "yaml;yml", {keyword, string, comment, {"LiteralColor", {192, 76, 11}}}});
    addLanguage(language, {"vrml", "wrl;x3dv", vrmlColours});
}

}  // namespace verdix::settings::tree
