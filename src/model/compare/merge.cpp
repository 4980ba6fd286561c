#include "model/compare/merge.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

#include "model/compare/change_text.h"
#include "model/compare/merge_claims.h"
#include "model/compare/merge_items.h"
#include "model/compare/merge_links.h"

namespace stelvan::model {
namespace {

constexpr std::string_view kAbsent = "not there";
constexpr std::string_view kRemoved = "removed";
constexpr std::string_view kThere = "there";

class Merger {
public:
    Merger(Model base, Model ours, Model theirs, std::optional<Side> decide)
        : decides_(decide.value_or(Side::Ours)),
          base_(std::move(base)),
          ours_(std::move(ours)),
          theirs_(std::move(theirs)) {
        for (const PartFacts& facts : parts()) {
            columnsInOurs_[indexOf(facts.part)] = ours_[facts.part].columns.size();
            addMissing(facts.part, ours_[facts.part], base_[facts.part]);
            addMissing(facts.part, theirs_[facts.part], base_[facts.part]);
        }
        oursClaims_ = Claims(differences(base_, ours_));
        theirsClaims_ = Claims(differences(base_, theirs_));
    }

    Merge merge() {
        for (const PartFacts& facts : parts()) {
            beginTable(facts.part);
            if (!isLinks(facts.part)) mergeItems(facts.part);
        }
        for (const Part part : {Part::EventReports, Part::ReportVariables}) mergeLinkLists(part);
        dropLostLimits();
        for (const PartFacts& facts : parts()) dropWhatSaysNothing(facts.part);
        sortRows(result_.merged);
        return std::move(result_);
    }

private:
    void beginTable(Part part) {
        Table& table = result_.merged[part];
        const Table& named = ours_[part].columns.empty() ? theirs_[part] : ours_[part];
        table.present = ours_[part].present;
        table.name = named.name;
        columns_ = columnVersions(base_[part], ours_[part], theirs_[part]);
        for (const ColumnVersions& column : columns_) table.columns.push_back(column.name);
    }

    void mergeItems(Part part) {
        columns_ = columnVersions(base_[part], ours_[part], theirs_[part]);
        for (const ItemVersions& item : itemVersions(part, base_, ours_, theirs_)) {
            if (item.ours != nullptr && item.theirs != nullptr)
                keepBoth(part, item);
            else if (item.base == nullptr)
                keepOne(part, item);
            else if (item.ours != nullptr || item.theirs != nullptr)
                removeUnlessClaimed(part, item);
        }
    }

    [[nodiscard]] std::string textOf(Part part, const ItemVersions& item) const {
        return item.ours != nullptr ? itemText(part, ours_[part], *item.ours)
                                    : itemText(part, theirs_[part], *item.theirs);
    }

    void keepBoth(Part part, const ItemVersions& item) {
        Row row{item.ours->id, {}};
        row.values.reserve(columns_.size());
        for (const ColumnVersions& column : columns_) {
            const ValueVersions values{valueAt(item.base, column.base),
                                       valueAt(item.ours, column.ours),
                                       valueAt(item.theirs, column.theirs)};
            const bool known = item.base != nullptr;
            const Decision decision = decide(values, known, column, decides_);
            if (decision.conflict)
                result_.conflicts.push_back({textOf(part, item), column.name,
                                             known ? valueText(values.base) : std::string(kAbsent),
                                             valueText(values.ours), valueText(values.theirs)});
            row.values.push_back(decision.takeTheirs ? values.theirs : values.ours);
        }
        result_.merged[part].rows.push_back(std::move(row));
    }

    /// What only one side has, as that has it.
    void keepOne(Part part, const ItemVersions& item) {
        const bool isOurs = item.ours != nullptr;
        Row row{isOurs ? item.ours->id : jet::RowId{}, {}};
        row.values.reserve(columns_.size());
        for (const ColumnVersions& column : columns_)
            row.values.push_back(isOurs ? valueAt(item.ours, column.ours)
                                        : valueAt(item.theirs, column.theirs));
        result_.merged[part].rows.push_back(std::move(row));
    }

    void removeUnlessClaimed(Part part, const ItemVersions& item) {
        const bool keptByOurs = item.ours != nullptr;
        const Claims& claims = keptByOurs ? oursClaims_ : theirsClaims_;
        const std::string claim = claims.on(part, item.id, item.place);
        if (claim.empty()) return;
        const std::string removed(kRemoved);
        result_.conflicts.push_back({textOf(part, item), "", std::string(kThere),
                                     keptByOurs ? claim : removed, keptByOurs ? removed : claim});
        decidedLists_.insert({part, item.id});
        if (keptByOurs == (decides_ == Side::Ours))
            keepOne(part, item);
        else
            lost_.insert({part, item.id});
    }

    /// Whether what an identifier names was removed although the other side linked to it.
    [[nodiscard]] bool isLost(std::span<const Part> where, const Key& id) const {
        return std::ranges::any_of(where, [&](Part part) { return lost_.contains({part, id}); });
    }

    void mergeLinkLists(Part part) {
        const auto owners = ownersOf(part);
        const LinkRules rules{
            .decides = decides_,
            .isDecided =
                [&](const Key& owner) {
                    return std::ranges::any_of(owners, [&](Part owning) {
                        return decidedLists_.contains({owning, owner});
                    });
                },
            .isLost = [&](const Key& target) { return isLost(targetsOf(part), target); }};
        mergeLinks(part, base_, ours_, theirs_, rules, result_);
    }

    /// Limits that one side added to a variable which the other removed and decided about.
    void dropLostLimits() {
        Table& limits = result_.merged[Part::Limits];
        const auto variable = limits.find(factsOf(Part::Limits).id);
        std::erase_if(limits.rows, [&](const Row& row) {
            return isLost(targetsOf(Part::ReportVariables), keyOf(valueAt(&row, variable)));
        });
    }

    /// Whether theirs says something in a column that the base does not say.
    [[nodiscard]] bool saysSomethingNew(Part part, std::string_view column) const {
        const PartFacts& facts = factsOf(part);
        using Words = std::tuple<Key, Key, Key>;
        const auto wordsOf = [&](const Table& table) {
            const auto id = table.find(facts.id);
            const auto second = table.find(isLinks(part) ? facts.target : facts.order);
            const auto said = table.find(column);
            std::set<Words> words;
            for (const Row& row : table.rows)
                if (!jet::isNull(valueAt(&row, said)))
                    words.emplace(keyOf(valueAt(&row, id)), keyOf(valueAt(&row, second)),
                                  keyOf(valueAt(&row, said)));
            return words;
        };
        return !std::ranges::includes(wordsOf(base_[part]), wordsOf(theirs_[part]));
    }

    /// Takes back the columns and the table that the file of ours does not have, unless theirs
    /// says something there that would be lost.
    void dropWhatSaysNothing(Part part) {
        Table& table = result_.merged[part];
        const std::size_t known = columnsInOurs_[indexOf(part)];
        for (std::size_t column = table.columns.size(); column-- > known;) {
            if (saysSomethingNew(part, table.columns[column])) {
                table.present = true;
                if (known == 0) return;
                continue;
            }
            const auto at = static_cast<std::ptrdiff_t>(column);
            if (known == 0) continue;
            table.columns.erase(table.columns.begin() + at);
            for (Row& row : table.rows) row.values.erase(row.values.begin() + at);
        }
        if (known == 0) table = {};
    }

    Side decides_;
    Model base_, ours_, theirs_;
    std::array<std::size_t, kParts> columnsInOurs_{};
    Claims oursClaims_{{}}, theirsClaims_{{}};
    std::vector<ColumnVersions> columns_;
    std::set<std::pair<Part, Key>> decidedLists_;  // owners whose links are as one side has them
    std::set<std::pair<Part, Key>> lost_;
    Merge result_;
};

}  // namespace

Merge merge(Model base, Model ours, Model theirs, std::optional<Side> decide) {
    return Merger(std::move(base), std::move(ours), std::move(theirs), decide).merge();
}

}  // namespace stelvan::model
