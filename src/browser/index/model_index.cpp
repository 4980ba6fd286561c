#include "browser/index/model_index.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "browser/index/index_reader.h"

namespace stelvan::browser {

using model::Part;

void NumberPairs::finish() {
    std::sort(pairs_.begin(), pairs_.end());
    pairs_.erase(std::unique(pairs_.begin(), pairs_.end()), pairs_.end());
    pairs_.shrink_to_fit();
}

std::span<const std::pair<std::int64_t, std::int64_t>> NumberPairs::of(std::int64_t key) const {
    const auto found =
        std::ranges::equal_range(pairs_, key, {}, [](const auto& pair) { return pair.first; });
    return {found.begin(), found.end()};
}

bool ModelIndex::isFresh(const std::filesystem::path& file) const {
    try {
        return database_ && jet::Database::open(file, jet::Access::ReadOnly).moment() == moment_;
    } catch (const jet::Error&) {
        return false;
    }
}

bool ModelIndex::refresh(const std::filesystem::path& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    const auto unchanged = database.beginRead();
    const std::uint64_t moment = database.moment();
    if (database_ && moment == moment_) return false;
    ModelIndex now;
    IndexReader reader(database);
    reader.readItems();
    now.items_ = std::move(reader.items);
    now.texts_ = std::move(reader.texts);
    now.groups_ = std::move(reader.groups);
    now.reportsOfVariable_ = reader.links(Part::ReportVariables);
    now.eventsOfReport_ = reader.links(Part::EventReports);
    now.alarmsSetBy_ = std::move(reader.alarmsSetBy);
    now.alarmsClearedBy_ = std::move(reader.alarmsClearedBy);
    now.childrenOfList_ = std::move(reader.childrenOfList);
    now.listOfChild_ = std::move(reader.listOfChild);
    now.byId_.resize(now.items_.size());
    for (std::uint32_t at = 0; at < now.byId_.size(); ++at) now.byId_[at] = at;
    const auto key = [&now](std::uint32_t at) {
        return std::tuple(now.items_[at].part, now.items_[at].id, at);
    };
    std::ranges::sort(now.byId_, {}, key);
    now.moment_ = moment;
    now.database_ = std::move(database);
    *this = std::move(now);
    return true;
}

std::span<const std::uint32_t> ModelIndex::sharing(Part part, std::int64_t id) const {
    if (id == kNoId) return {};
    const auto key = [this](std::uint32_t at) { return std::pair(items_[at].part, items_[at].id); };
    const auto found = std::ranges::equal_range(byId_, std::pair(part, id), {}, key);
    return {found.begin(), found.end()};
}

std::optional<std::size_t> ModelIndex::find(std::int16_t category, std::int64_t id) const {
    for (const model::PartFacts& facts : model::parts()) {
        if (facts.kind != gem::kindOf(category)) continue;
        for (const std::uint32_t at : sharing(facts.part, id))
            if (items_[at].category == category) return at;
    }
    return std::nullopt;
}

std::optional<std::size_t> ModelIndex::find(std::int16_t category, std::string_view name) const {
    const auto found = std::ranges::find_if(items_, [&](const IndexedItem& item) {
        return item.category == category && nameOf(item) == name;
    });
    if (found == items_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - items_.begin());
}

void ModelIndex::addUses(std::vector<Use>& uses, Role role, const NumberPairs& users,
                         std::int64_t id, std::span<const Part> parts) const {
    for (const auto& [key, user] : users.of(id)) {
        for (const Part part : parts)
            for (const std::uint32_t item : sharing(part, user))
                if (items_[item].category != gem::NO_CATEGORY) uses.push_back({role, item});
    }
}

std::vector<Use> ModelIndex::usesOf(std::int16_t category, std::int64_t id) const {
    constexpr std::array kReports{Part::Reports};
    constexpr std::array kAlarms{Part::Alarms};
    constexpr std::array kVariables{Part::CustomVariables};
    constexpr std::array kEvents{Part::StandardEvents, Part::CustomEvents};
    std::vector<Use> uses;
    switch (gem::kindOf(category)) {
        case gem::Kind::Variable:
            addUses(uses, Role::InReport, reportsOfVariable_, id, kReports);
            if (!gem::isCustomVariable(category)) break;
            addUses(uses, Role::InList, listOfChild_, id, kVariables);
            addUses(uses, Role::HoldsChild, childrenOfList_, id, kVariables);
            break;
        case gem::Kind::CollectionEvent:
            addUses(uses, Role::SetsAlarm, alarmsSetBy_, id, kAlarms);
            addUses(uses, Role::ClearsAlarm, alarmsClearedBy_, id, kAlarms);
            break;
        case gem::Kind::Report:
            addUses(uses, Role::SentByEvent, eventsOfReport_, id, kEvents);
            break;
        default:
            break;
    }
    std::ranges::sort(uses);
    return uses;
}

bool ModelIndex::eachText(
    const std::function<void(std::size_t item, std::string_view text)>& look) {
    if (!database_) return false;
    const auto unchanged = database_->beginRead();
    if (database_->moment() != moment_) return false;
    IndexReader(*database_).readTexts(items_, look);
    return true;
}

}  // namespace stelvan::browser
