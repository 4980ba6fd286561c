#include "model/compare/merge_claims.h"

#include <algorithm>

#include "model/compare/change_text.h"

namespace stelvan::model {
namespace {

std::string detailsOf(const ItemChange& change) {
    std::string all;
    for (const ChangeLine& line : linesOf(change)) {
        if (line.depth == 0) continue;
        if (!all.empty()) all += ", ";
        if (line.sign != ' ') all.append({line.sign, ' '});
        all += line.text;
    }
    return all;
}

}  // namespace

Claims::Claims(std::span<const ItemChange> changes) {
    for (const ItemChange& change : changes) {
        const Key id = keyOf(change.id);
        if (change.change == Change::Changed && !isLinks(change.part))
            changed_.emplace(std::tuple(change.part, id, keyOf(change.place)), detailsOf(change));
        if (change.change == Change::Removed) continue;
        if (change.part == Part::Limits)
            linked_.emplace(std::pair(Part::Limits, id), itemText(change) + " is for it");
        for (const LinkChange& link : change.links)
            if (link.kind == LinkChange::Kind::Added)
                linked_.emplace(std::pair(link.part, keyOf(link.target)),
                                itemText(change) + " links to it");
    }
}

std::string Claims::on(Part part, const Key& id, const Key& place) const {
    const auto changed = changed_.find({part, id, place});
    if (changed != changed_.end()) return changed->second;
    for (const Part links : {Part::EventReports, Part::ReportVariables, Part::Limits}) {
        const auto targets =
            links == Part::Limits ? targetsOf(Part::ReportVariables) : targetsOf(links);
        if (std::ranges::find(targets, part) == targets.end()) continue;
        const auto linked = linked_.find({links, id});
        if (linked != linked_.end()) return linked->second;
    }
    return {};
}

bool Claims::linked(Part links, const Key& target) const {
    return linked_.contains({links, target});
}

}  // namespace stelvan::model
