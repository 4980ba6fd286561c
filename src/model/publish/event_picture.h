// The picture of a collection event: the event on the left, the reports that it sends in the
// middle, the variables that each of them carries on the right.
//
// Only where everything lies, in units of which a text line is about 18 high; drawing is somebody
// else's (event_svg.h for pages).
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/core/cross_reference.h"

namespace stelvan::model {

struct PictureBox {
    enum class Kind : std::uint8_t { Event, Report, Variable, More };
    Kind kind = Kind::Event;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    std::string id;            // as the file has it; empty for More
    std::string name;          // on one line; what to say instead where there is no such item
    bool shortened = false;    // whether `name` had to be cut to fit
    std::optional<Item> item;  // for More the report; nothing where a link leads nowhere
};

/// From the right side of one box to the left side of another.
struct PictureLine {
    int fromX = 0;
    int fromY = 0;
    int toX = 0;
    int toY = 0;
};

struct EventPicture {
    int width = 0;
    int height = 0;
    std::vector<PictureBox> boxes;  // the event, then each report followed by its variables
    std::vector<PictureLine> lines;
    std::size_t reports = 0;
    std::size_t variables = 0;  // of all reports, shown or not
};

/// How wide a text of one line is.
using TextWidth = std::function<int(std::string_view)>;

/// For a sans-serif font of 13 units whose metrics nobody knows; rather too wide.
[[nodiscard]] int estimatedWidth(std::string_view text);

/// Of a report so many variables are shown at most.
inline constexpr std::size_t kMostVariables = 12;

/// Of a report with many variables the first are shown, and a box that says how many more there
/// are: its name is that text. An event without reports gives the event's box alone.
[[nodiscard]] EventPicture pictureOf(const Item& event, const CrossReference& references,
                                     const TextWidth& widthOf = estimatedWidth);

}  // namespace stelvan::model
