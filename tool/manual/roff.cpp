#include "manual/roff.hpp"

#include <algorithm>
#include <array>

namespace vx::tool {

namespace {

struct Escape
{
    char character;
    std::string_view roff;
};

/// Characters that roff prints as others, or that end an argument or begin an escape sequence.
constexpr std::array<Escape, 7> escapes = {{{'\\', "\\e"},
                                            {'-', "\\-"},
                                            {'"', "\\(dq"},
                                            {'\'', "\\(aq"},
                                            {'^', "\\(ha"},
                                            {'~', "\\(ti"},
                                            {'`', "\\(ga"}}};

/// Returns the text escaped for any place in a line. A leading dot would begin a request.
std::string escaped(std::string_view text)
{
    std::string roff = text.starts_with('.') ? "\\&" : "";
    for (const char character : text) {
        const auto escape = std::ranges::find(escapes, character, &Escape::character);
        if (escape == escapes.end()) {
            roff += character;
        } else {
            roff += escape->roff;
        }
    }
    return roff;
}

/// Returns the text as one argument of a macro.
std::string quoted(std::string_view text)
{
    return '"' + escaped(text) + '"';
}

}  // namespace

RoffPage::RoffPage(std::string_view name, std::string_view source, std::string_view manual)
{
    text_.append(".TH ").append(quoted(name)).append(" 1 \"\" ").append(quoted(source));
    text_.append(" ").append(quoted(manual)).append("\n.ad l\n.nh\n");
}

void RoffPage::heading(std::string_view macro, std::string_view text)
{
    text_.append(macro).append(" ").append(quoted(text)).append("\n");
    isBelowHeading_ = true;
}

void RoffPage::section(std::string_view text)
{
    heading(".SH", text);
}

void RoffPage::subsection(std::string_view text)
{
    heading(".SS", text);
}

void RoffPage::beginParagraph()
{
    text_.append(isBelowHeading_ ? "" : ".PP\n");
    isBelowHeading_ = false;
}

void RoffPage::paragraph(std::string_view text)
{
    beginParagraph();
    text_.append(escaped(text)).append("\n");
}

void RoffPage::entry(std::string_view term, std::string_view argument, std::string_view meaning)
{
    isBelowHeading_ = false;
    text_.append(".TP\n\\fB").append(escaped(term)).append("\\fR");
    if (!argument.empty()) {
        text_.append(" \\fI").append(escaped(argument)).append("\\fR");
    }
    text_.append("\n").append(escaped(meaning)).append("\n");
}

void RoffPage::command(std::string_view literal, std::string_view placeholders)
{
    beginParagraph();
    text_.append("\\fB").append(escaped(literal)).append("\\fR");
    text_.append("\\fI").append(escaped(placeholders)).append("\\fR\n");
}

void RoffPage::beginExample()
{
    beginParagraph();
    text_.append(".RS 4\n.nf\n");
}

void RoffPage::exampleLine(std::string_view text)
{
    text_.append(escaped(text)).append("\n");
}

void RoffPage::endExample()
{
    text_.append(".fi\n.RE\n");
}

}  // namespace vx::tool
