// An event's picture as SVG inside a page; colours and fonts are the page's.
#pragma once

#include <functional>
#include <string>

#include "model/publish/event_picture.h"
#include "model/publish/html.h"

namespace stelvan::model {

/// The place on the page of an item, without "#".
using AnchorOf = std::function<std::string(const Item&)>;

/// Boxes are links to what they stand for. Classes: picture; lines; event, report, variable, more,
/// missing. With a title and a description in words.
void writeSvg(Html& html, const EventPicture& picture, const AnchorOf& anchorOf);

}  // namespace stelvan::model
