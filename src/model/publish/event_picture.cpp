#include "model/publish/event_picture.h"

#include <algorithm>
#include <span>
#include <tuple>
#include <utility>

#include "base/text.h"
#include "base/utf.h"
#include "gem/schema.h"

namespace stelvan::model {
namespace {

using Kind = PictureBox::Kind;

constexpr int kMargin = 1;      // for the strokes at the edge
constexpr int kBoxHeight = 30;  // of the event and of reports
constexpr int kRowHeight = 22;  // of a variable
constexpr int kReportGap = 12;  // between the rows of two reports
constexpr int kColumnGap = 48;  // where the lines run
constexpr int kPadding = 12;    // beside the text of a box
constexpr int kBetween = 8;     // from the identifier to the name
constexpr std::size_t kLongestName = 36;  // in characters of usual width

/// 2 for the broad characters of East Asia and for pictograms, 1 for all else.
std::size_t breadthOf(char32_t c) {
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xFFDC) || c >= 0x1F000 ? 2 : 1;
}

std::size_t breadthOf(std::string_view text) {
    std::size_t breadth = 0;
    for (std::size_t at = 0; at < text.size();) breadth += breadthOf(base::nextCharacter(text, at));
    return breadth;
}

/// The bytes at the start of a text that are at most so broad.
std::size_t bytesWithin(std::string_view text, std::size_t breadth) {
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t next = at;
        const std::size_t one = breadthOf(base::nextCharacter(text, next));
        if (one > breadth) break;
        breadth -= one;
        at = next;
    }
    return at;
}

/// Without its middle where it is long: names often differ only at their ends.
std::string withoutMiddle(const std::string& text) {
    const std::size_t breadth = breadthOf(text);
    if (breadth <= kLongestName) return text;
    const std::size_t head = bytesWithin(text, kLongestName / 2);
    const std::size_t tail = bytesWithin(text, breadth - kLongestName / 2 + 1);
    return text.substr(0, head) + "\xE2\x80\xA6" + text.substr(tail);
}

class Layout {
public:
    Layout(const CrossReference& references, const TextWidth& widthOf)
        : references_(references), widthOf_(widthOf) {}

    EventPicture of(const Item& event) {
        add(Kind::Event, event.idText(), event);
        if (const auto id = event.id())
            for (const auto& link : references_.reportsOfEvent().of(*id)) addReport(link.item);
        placeColumns();
        return std::move(picture_);
    }

private:
    /// A box without its place.
    PictureBox& add(Kind kind, const std::string& id, const std::optional<Item>& item) {
        PictureBox box;
        box.kind = kind;
        box.id = base::onOneLine(id);
        box.item = item;
        const std::string name = item ? base::onOneLine(item->name()) : "not in the model";
        box.name = withoutMiddle(name);
        box.shortened = box.name != name;
        box.height = kind == Kind::Event || kind == Kind::Report ? kBoxHeight : kRowHeight;
        return picture_.boxes.emplace_back(std::move(box));
    }

    void addReport(const Item& link) {
        ++picture_.reports;
        const auto id = link.number(gem::schema::event_report::kReportId);
        const auto report = CrossReference::first(references_.reports(), id);
        const std::size_t at = picture_.boxes.size();
        if (at > 1) bottom_ += kReportGap;
        add(Kind::Report, link.text(gem::schema::event_report::kReportId), report);
        const int top = bottom_;
        if (report) {
            const auto links = references_.variablesOfReport().of(*id);
            if (links.size() == 1) bottom_ += (kBoxHeight - kRowHeight) / 2;
            addVariables(*report, links);
        }
        bottom_ = std::max(bottom_, top + kBoxHeight);
        picture_.boxes[at].y = (top + bottom_ - kBoxHeight) / 2;
    }

    void addVariables(const Item& report, std::span<const Relation::Entry> links) {
        picture_.variables += links.size();
        const bool all = links.size() <= kMostVariables;
        for (const auto& link : links.first(all ? links.size() : kMostVariables - 1)) {
            namespace column = gem::schema::report_variable;
            const auto id = link.item.number(column::kVariableId);
            addRow(add(Kind::Variable, link.item.text(column::kVariableId),
                       CrossReference::first(references_.variables(), id)));
        }
        if (all) return;
        PictureBox& more = add(Kind::More, "", report);
        more.name = "and " + std::to_string(links.size() - kMostVariables + 1) + " more";
        more.shortened = false;
        addRow(more);
    }

    void addRow(PictureBox& box) {
        box.y = bottom_;
        bottom_ += kRowHeight;
    }

    [[nodiscard]] int widthOf(const PictureBox& box) const {
        const int id = box.id.empty() ? 0 : widthOf_(box.id) + kBetween;
        return id + widthOf_(box.name) + 2 * kPadding;
    }

    /// Boxes of one kind are equally wide and stand below each other.
    void placeColumns() {
        int widths[3] = {};
        for (const PictureBox& box : picture_.boxes) {
            int& width = widths[columnOf(box)];
            width = std::max(width, widthOf(box));
        }
        int left = kMargin;
        for (int column = 0; column < 3; ++column) {
            if (widths[column] == 0) continue;
            if (column > 0) left += kColumnGap;
            for (PictureBox& box : picture_.boxes)
                if (columnOf(box) == column) std::tie(box.x, box.width) = {left, widths[column]};
            left += widths[column];
        }
        bottom_ = std::max(bottom_, kMargin + kBoxHeight);
        picture_.boxes.front().y = (kMargin + bottom_ - kBoxHeight) / 2;
        picture_.width = left + kMargin;
        picture_.height = bottom_ + kMargin;
        join();
    }

    static int columnOf(const PictureBox& box) {
        return std::min(static_cast<int>(box.kind), static_cast<int>(Kind::Variable));
    }

    void join() {
        const PictureBox* report = nullptr;
        for (const PictureBox& box : picture_.boxes) {
            if (box.kind == Kind::Event) continue;
            if (box.kind == Kind::Report) report = &box;
            const PictureBox& from = &box == report ? picture_.boxes.front() : *report;
            picture_.lines.push_back(
                {from.x + from.width, from.y + from.height / 2, box.x, box.y + box.height / 2});
        }
    }

    const CrossReference& references_;
    const TextWidth& widthOf_;
    EventPicture picture_;
    int bottom_ = kMargin;
};

}  // namespace

int estimatedWidth(std::string_view text) {
    constexpr std::size_t kTenths = 78;  // of a unit, for one character of usual width
    return static_cast<int>((breadthOf(text) * kTenths + 9) / 10);
}

EventPicture pictureOf(const Item& event, const CrossReference& references,
                       const TextWidth& widthOf) {
    return Layout(references, widthOf).of(event);
}

}  // namespace stelvan::model
