#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

constexpr auto fontSize = inRange(1, 100);  // points
constexpr auto fontStyle = inRange(0, 3);   // plain, bold, italic, both

void buildCodeFont(FactoryGroup& fonts)
{
    auto codeFont = addGroup(fonts, "codefont", Visible);
    addCharvec(codeFont, "Name", "Monospaced");
    addInteger(codeFont, "Style", 0, fontStyle);
    addInteger(codeFont, "Size", 10, fontSize);
}

void buildCustomFonts(FactoryGroup& fonts)
{
    auto custom = addGroup(fonts, "custom");
    auto editor = addGroup(custom, "editor");
    addCharvec(editor, "FontToUse", "CodeFont", oneOf({"CodeFont", "TextFont", "CustomFont"}));
    addCharvec(editor, "Name", "Courier");
    addInteger(editor, "Size", 9, fontSize);
    addInteger(editor, "Style", 0, fontStyle);
}

void buildTextFont(FactoryGroup& fonts)
{
    auto textFont = addGroup(fonts, "textfont");
    addLogical(textFont, "UseSystemFont", true);
    addCharvec(textFont, "Name", "Helvetica");
    addInteger(textFont, "Size", 9, fontSize);
    addInteger(textFont, "Style", 0, fontStyle);
}

struct ParagraphFont
{
    const char* paragraph;
    const char* name;
    const char* style;
    const char* size;
    Rgb colour;
};

constexpr Rgb darkGrey{33, 33, 33};
constexpr Rgb orange{192, 76, 11};

constexpr ParagraphFont paragraphFonts[] = {
    {"code", "Monospaced", "plain", "14px", darkGrey},   {"normal", "SansSerif", "plain", "14px", darkGrey},
    {"title", "SansSerif", "plain", "24px", orange},     {"heading1", "SansSerif", "bold", "20px", darkGrey},
    {"heading2", "SansSerif", "bold", "17px", darkGrey}, {"heading3", "SansSerif", "bold", "15px", darkGrey},
};

void buildEditorFonts(FactoryGroup& fonts)
{
    const auto styles = oneOf({"plain", "bold", "italic"});
    const auto service = [](const char* function) { return native("libvxservices", function); };

    auto editor = addGroup(fonts, "editor", Visible);
    for (const auto& font : paragraphFonts) {
        auto paragraph = addGroup(editor, font.paragraph, Visible);
        addCharvec(paragraph, "Name", font.name);
        addCell(paragraph, "Style", {font.style}, styles, service("validateFontStyle"));
        addCharvec(paragraph, "Size", font.size, service("validateFontSize"));
        addColour(paragraph, "Color", font.colour, service("validateFontColor"));
    }
}

}  // namespace

void buildFontsArea(FactoryGroup& root)
{
    auto fonts = addGroup(root, "fonts", Visible);
    buildCodeFont(fonts);
    buildCustomFonts(fonts);
    buildTextFont(fonts);
    buildEditorFonts(fonts);
}

}  // namespace verdix::settings::tree
