// The chapters of the manual and what stands in each: which items, in which order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/core/cross_reference.h"
#include "model/core/model.h"

namespace stelvan::model::manual {

enum class Content : std::uint8_t {
    About,
    Settings,
    Variables,
    Constants,  // variables, too
    Events,
    Reports,
    Alarms,
    Limits,
    Findings
};

/// Items under one heading; `id` is its place on the page.
struct Section {
    std::string id;
    std::string_view title;
    std::vector<Item> items;
};

struct Chapter {
    std::string_view id;  // its place on the page
    std::string_view title;
    Content content;
    std::string_view noun;  // of one item
    std::string_view lead;  // what the chapter is about
    std::string number = {};
    std::vector<Section> sections = {};  // none of them is empty

    [[nodiscard]] std::size_t items() const;
};

/// All chapters in their order. Each item of the model is in exactly one; chapters without items
/// are there, too, except for variables of no known type and for the findings, which come last and
/// only where they are wanted.
[[nodiscard]] std::vector<Chapter> outlineOf(const Model& model, bool findings);

}  // namespace stelvan::model::manual
