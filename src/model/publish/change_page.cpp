#include "model/publish/change_page.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "jet/rows/value_text.h"
#include "model/compare/change_text.h"
#include "model/publish/html.h"
#include "model/publish/page_texts.h"

namespace stelvan::model {
namespace {

using Group = std::span<const ItemChange>;  // of one part

std::string_view wordFor(Change change) {
    constexpr std::array<std::string_view, 3> kWords = {"added", "removed", "changed"};
    return kWords[static_cast<std::size_t>(change)];
}

struct LinkWords {
    std::string_view word;
    std::string_view cssClass;
};

/// A move is marked as a change.
LinkWords wordsFor(LinkChange::Kind kind) {
    constexpr std::array<LinkWords, 4> kWords = {
        {{"added", "added"}, {"removed", "removed"}, {"moved", "changed"}, {"changed", "changed"}}};
    return kWords[static_cast<std::size_t>(kind)];
}

std::vector<Group> groupsOf(Group changes) {
    std::vector<Group> groups;
    while (!changes.empty()) {
        const auto end = std::ranges::find_if(
            changes, [&](const ItemChange& change) { return change.part != changes.front().part; });
        groups.push_back(changes.first(static_cast<std::size_t>(end - changes.begin())));
        changes = changes.subspan(groups.back().size());
    }
    return groups;
}

/// "Standard variables", "Reports".
std::string captionOf(Part part) {
    const PartFacts& facts = factsOf(part);
    const bool standard = part == Part::StandardVariables || part == Part::StandardEvents;
    std::string caption = (standard ? "standard " : "") + std::string(facts.noun) + "s";
    caption[0] = base::upperCase(caption[0]);
    return caption;
}

class ChangePage {
public:
    explicit ChangePage(const Sink& sink) : html_(sink) {}

    void write(Group changes, const ComparedSides& sides) {
        html_.markup("<!DOCTYPE html>\n").open("html").attribute("lang", "en");
        writeHead(sides);
        html_.open("body").open("main");
        html_.element("h1", "Changes");
        html_.open("dl").attribute("class", "sides");
        html_.element("dt", "From").element("dd", sides.before);
        html_.element("dt", "To").element("dd", sides.after);
        html_.close();
        html_.open("p").element("b", capitalised(summaryOf(changes))).text(".").close();
        const std::vector<Group> groups = groupsOf(changes);
        if (!groups.empty()) writeCounts(groups);
        for (const Group& group : groups) writeGroup(group);
        html_.close().close().close().markup("\n").finish();
    }

private:
    static std::string capitalised(std::string text) {
        text[0] = base::upperCase(text[0]);
        return text;
    }

    static std::string anchorOf(Part part) { return "part" + std::to_string(indexOf(part)); }

    void writeHead(const ComparedSides& sides) {
        html_.open("head");
        html_.open("meta").attribute("charset", "utf-8").closeEmpty();
        html_.open("meta").attribute("name", "viewport");
        html_.attribute("content", "width=device-width, initial-scale=1").closeEmpty();
        html_.element("title", "Changes from " + sides.before + " to " + sides.after);
        html_.open("style").markup(kChangesStyle).close();
        html_.close().markup("\n");
    }

    void writeHeadings(std::initializer_list<std::string_view> titles) {
        html_.open("thead").open("tr");
        for (const std::string_view title : titles)
            html_.open("th").attribute("scope", "col").text(title).close();
        html_.close().close();
    }

    void writeCounts(const std::vector<Group>& groups) {
        html_.open("table").attribute("class", "counts");
        writeHeadings({"Kind", "Added", "Changed", "Removed"});
        html_.open("tbody");
        for (const Group& group : groups) {
            html_.open("tr").open("td").open("a");
            html_.attribute("href", "#" + anchorOf(group.front().part));
            html_.text(captionOf(group.front().part)).close().close();
            for (const Change change : {Change::Added, Change::Changed, Change::Removed}) {
                const auto count = std::ranges::count(group, change, &ItemChange::change);
                html_.element("td", count == 0 ? "" : std::to_string(count));
            }
            html_.close();
        }
        html_.close().close().markup("\n");
    }

    void writeGroup(Group group) {
        const Part part = group.front().part;
        html_.open("section").attribute("aria-labelledby", anchorOf(part));
        html_.open("h2").attribute("id", anchorOf(part)).text(captionOf(part)).close();
        for (const ItemChange& change : group) writeItem(change);
        html_.close().markup("\n");
    }

    void writeItem(const ItemChange& change) {
        html_.open("article").attribute("class", wordFor(change.change));
        html_.open("h3").element("span", "what", wordFor(change.change));
        html_.text(itemText(change)).close();
        if (!change.fields.empty()) writeFields(change);
        if (!change.links.empty()) writeLinks(change.links);
        html_.close().markup("\n");
    }

    void writeFields(const ItemChange& change) {
        html_.open("table").attribute("class", "fields");
        const bool both = change.change == Change::Changed;
        if (both)
            writeHeadings({"Field", "Before", "After"});
        else
            writeHeadings({"Field", change.change == Change::Added ? "Now" : "Was"});
        html_.open("tbody");
        for (const FieldChange& field : change.fields) {
            html_.open("tr").element("td", field.column);
            if (both || change.change == Change::Removed) writeValue("old", field.before);
            if (both || change.change == Change::Added) writeValue("new", field.after);
            html_.close();
        }
        html_.close().close();
    }

    /// Null and an empty text look alike, so both are said in words.
    void writeValue(std::string_view cssClass, const jet::Value& value) {
        html_.open("td").attribute("class", cssClass);
        const std::string text = jet::textOf(value);
        if (jet::isNull(value))
            html_.element("i", "no value");
        else if (text.empty())
            html_.element("i", "empty text");
        else
            html_.text(text);
        html_.close();
    }

    void writeLinks(const std::vector<LinkChange>& links) {
        html_.open("ul");
        for (const LinkChange& link : links) {
            html_.open("li").attribute("class", wordsFor(link.kind).cssClass);
            html_.element("span", "what", wordsFor(link.kind).word).text(targetText(link));
            html_.element("span", "soft", placesOf(link));
            for (const FieldChange& field : link.fields)
                html_.element("div", "soft",
                              field.column + ": " + valueText(field.before) + " \u2192 " +
                                  valueText(field.after));
            html_.close();
        }
        html_.close();
    }

    static std::string placesOf(const LinkChange& link) {
        const std::string before = valueText(link.before);
        const std::string after = valueText(link.after);
        if (link.kind == LinkChange::Kind::Reordered)
            return ", place " + before + " \u2192 " + after;
        return ", place " + (link.kind == LinkChange::Kind::Removed ? before : after);
    }

    Html html_;
};

}  // namespace

void writeChangePage(std::span<const ItemChange> changes, const ComparedSides& sides,
                     const Sink& sink) {
    ChangePage(sink).write(changes, sides);
}

}  // namespace stelvan::model
