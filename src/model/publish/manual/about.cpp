#include <array>

#include "model/publish/manual/chapters.h"

namespace stelvan::model::manual {
namespace {

/// A format code of the model, and what it is in a message.
struct FormatFacts {
    std::string_view code;
    std::string_view item;   // as SML writes it
    std::string_view octal;  // format code of SEMI E5
    std::string_view holds;
};

constexpr auto kFormats = std::to_array<FormatFacts>({
    {"A", "A", "20", "characters of a text"},
    {"B", "B", "10", "bytes, each 0 to 255"},
    {"BL", "BOOLEAN", "11", "TRUE or FALSE"},
    {"F4", "F4", "44", "floating-point number of 4 bytes"},
    {"F8", "F8", "40", "floating-point number of 8 bytes"},
    {"I1", "I1", "31", "-128 to 127"},
    {"I2", "I2", "32", "-32768 to 32767"},
    {"I4", "I4", "34", "-2147483648 to 2147483647"},
    {"I8", "I8", "30", "-9223372036854775808 to 9223372036854775807"},
    {"L", "L", "00", "list of other items"},
    {"U1", "U1", "51", "0 to 255"},
    {"U2", "U2", "52", "0 to 65535"},
    {"U4", "U4", "54", "0 to 4294967295"},
    {"U8", "U8", "50", "0 to 18446744073709551615"},
});

/// What the standard wants documented, and the chapter that does it; none where the model cannot.
struct Topic {
    std::string_view title;
    std::string_view chapter;
};

constexpr auto kTopics = std::to_array<Topic>({
    {"Variables: status variables", "sv"},
    {"Variables: data variables", "dv"},
    {"Variables: equipment constants", "ec"},
    {"Collection events", "events"},
    {"Report definitions and their links to events", "reports"},
    {"Alarms", "alarms"},
    {"Limits that are monitored", "limits"},
    {"Communication parameters", "settings"},
    {"Statement of compliance", ""},
    {"State models", ""},
    {"Messages and their structure", ""},
    {"Remote commands and process programs", ""},
});

constexpr std::string_view kPurpose =
    "This manual describes the SECS/GEM interface of the equipment to those who connect a host to "
    "it. It is made of the equipment's model, the file by which its communication service works, "
    "and says what that file says.";

constexpr std::string_view kReading =
    "Numbers are decimal. Every identifier that is mentioned leads to the place where it is "
    "described, and from there back to all that use it. Of a list variable, the items in it are "
    "named in the order in which they are sent.";

const Chapter* chapterOf(const Page& page, std::string_view id) {
    for (const Chapter& chapter : page.chapters)
        if (chapter.id == id) return &chapter;
    return nullptr;
}

void writeTopics(Page& page) {
    Html& html = page.html;
    html.open("h3").attribute("id", "about-scope").text("What is in it, and what is not").close();
    constexpr std::array kColumns = {Column{"What a GEM manual documents", "topic"},
                                     Column{"Where", "where"}};
    page.table("Scope", "plain", kColumns, kTopics.size(), [&](std::size_t number) {
        const Topic& topic = kTopics[number];
        html.open("tr").open("th").attribute("scope", "row").text(topic.title).close().open("td");
        if (const Chapter* chapter = chapterOf(page, topic.chapter)) {
            html.open("a").attribute("href", "#" + std::string(topic.chapter));
            html.text("Chapter " + chapter->number).close();
        } else {
            html.text("not held by the model; the maker adds it");
        }
        html.close().close();
    });
}

void writeFormats(Page& page) {
    Html& html = page.html;
    html.open("h3").attribute("id", "about-formats").text("Formats").close();
    constexpr std::array kColumns = {Column{"Format", "code"}, Column{"SECS-II item", "code"},
                                     Column{"Code, octal", "code"}, Column{"Holds", "meaning"}};
    page.table("Formats", "plain", kColumns, kFormats.size(), [&](std::size_t number) {
        const FormatFacts& format = kFormats[number];
        html.open("tr").open("th").attribute("scope", "row").text(format.code).close();
        html.element("td", format.item).element("td", format.octal).element("td", format.holds);
        html.close();
    });
}

}  // namespace

void writeAbout(Page& page) {
    page.html.element("p", kPurpose).element("p", kReading);
    writeTopics(page);
    writeFormats(page);
}

}  // namespace stelvan::model::manual
