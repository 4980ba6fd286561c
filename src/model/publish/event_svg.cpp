#include "model/publish/event_svg.h"

#include "base/text.h"

namespace stelvan::model {
namespace {

using Kind = PictureBox::Kind;

constexpr int kCorner = 6;
constexpr int kTextLeft = 12;
constexpr int kBaseline = 5;  // below the middle of a box

std::string_view classOf(const PictureBox& box) {
    if (!box.item) return "missing";
    switch (box.kind) {
        case Kind::Event:
            return "event";
        case Kind::Report:
            return "report";
        case Kind::Variable:
            return "variable";
        case Kind::More:
            break;
    }
    return "more";
}

/// All lines in one path.
std::string pathOf(const EventPicture& picture) {
    std::string path;
    const auto add = [&](std::string_view command, std::initializer_list<int> numbers) {
        path += command;
        for (const int number : numbers) path.append(std::to_string(number)).append(" ");
    };
    for (const PictureLine& line : picture.lines) {
        const int middle = (line.fromX + line.toX) / 2;
        add("M", {line.fromX, line.fromY});
        add("C", {middle, line.fromY, middle, line.toY, line.toX, line.toY});
    }
    if (!path.empty()) path.pop_back();
    return path;
}

void writeBox(Html& html, const PictureBox& box, const AnchorOf& anchorOf) {
    const bool isLink = box.item && box.kind != Kind::Event;
    html.open(isLink ? "a" : "g").attribute("class", classOf(box));
    if (isLink) html.attribute("href", "#" + anchorOf(*box.item));
    if (box.shortened) html.element("title", base::onOneLine(box.item->name()));
    html.open("rect").attribute("x", box.x).attribute("y", box.y);
    html.attribute("width", box.width).attribute("height", box.height);
    html.attribute("rx", kCorner).closeEmpty();
    html.open("text").attribute("x", box.x + kTextLeft);
    html.attribute("y", box.y + box.height / 2 + kBaseline);
    if (!box.id.empty()) html.element("tspan", box.id).text(" ");
    html.text(box.name).close().close();
}

}  // namespace

void writeSvg(Html& html, const EventPicture& picture, const AnchorOf& anchorOf) {
    const std::string size = std::to_string(picture.width) + " " + std::to_string(picture.height);
    const PictureBox& event = picture.boxes.front();
    html.open("svg").attribute("class", "picture").attribute("role", "group");
    html.attribute("width", picture.width).attribute("height", picture.height);
    html.attribute("viewBox", "0 0 " + size);
    html.element("title", "What event " + event.id + " sends");
    html.element("desc", event.name + " sends " + base::counted(picture.reports, "report") +
                             " with " + base::counted(picture.variables, "variable") + ".");
    html.open("path").attribute("class", "lines").attribute("d", pathOf(picture)).closeEmpty();
    for (const PictureBox& box : picture.boxes) writeBox(html, box, anchorOf);
    html.close();
}

}  // namespace stelvan::model
