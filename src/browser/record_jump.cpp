#include "browser/record_jump.h"

#include <QLabel>
#include <QTabBar>

#include "base/text.h"
#include "form/text.h"
#include "gem/kinds.h"
#include "gem/schema.h"
#include "model/core/values.h"

namespace stelvan::browser {

std::string idColumnOf(std::int16_t category) {
    if (category == gem::GEMSTT) return gem::schema::setting::kField;
    const gem::Control id = gem::fieldWith(gem::kindOf(category), gem::Check::Id);
    return id == gem::Control::None ? std::string() : std::string(gem::factsOf(id).column);
}

RecordAddress RecordJump::addressOf(const IndexedItem& item) const {
    const bool numbered = item.id != kNoId;
    return {item.category, numbered ? std::to_string(item.id) : std::string(index_.nameOf(item)),
            item.place};
}

bool RecordJump::showAnew(const RecordAddress& address) {
    if (window_.state.editing() || gem::kindOf(address.category) == gem::Kind::None) return false;
    return load(address.category) && show(address);
}

std::optional<RecordAddress> RecordJump::shown() const {
    const form::MainState& state = window_.state;
    if (!state.current.onRecord()) return std::nullopt;
    const auto place = state.current.records->place();
    if (!place) return std::nullopt;
    try {
        const db::Value id = state.current.records->field(idColumnOf(state.category));
        return RecordAddress{state.category, db::toTextOrEmpty(id), *place};
    } catch (const base::RunTimeError&) {
        return std::nullopt;  // the display has said so
    }
}

bool RecordJump::holds(std::int32_t row, const RecordAddress& address) const {
    const db::Recordset& records = *window_.state.current.records;
    const std::string column = idColumnOf(address.category);
    for (std::size_t field = 0; field < records.fieldCount(); ++field)
        if (base::sameWord(records.fieldName(field), column))
            return db::toTextOrEmpty(records.storedField(row, field)) == address.id;
    return false;
}

std::optional<jet::RowId> RecordJump::presentPlace(const RecordAddress& address) const {
    const auto id =
        address.category == gem::GEMSTT ? std::nullopt : model::wholeNumber(jet::Value(address.id));
    try {
        index_.refresh(window_.operations.path());
    } catch (const jet::Error&) {
        return std::nullopt;  // what shows records says so
    }
    const auto item = id ? index_.find(address.category, *id)
                         : index_.find(address.category, std::string_view(address.id));
    return item ? std::optional(index_.items()[*item].place) : std::nullopt;
}

std::optional<std::int32_t> RecordJump::rowOf(const RecordAddress& address) const {
    const db::CurrentRecords& current = window_.state.current;
    if (current.records == nullptr) return std::nullopt;
    try {
        const auto row = current.records->storedAt(address.place);
        if (row && holds(*row, address)) return row;
    } catch (const base::RunTimeError&) {
        // It is gone from there.
    }
    const auto place = presentPlace(address);
    return place ? current.records->storedAt(*place) : std::nullopt;
}

bool RecordJump::load(std::int16_t category) {
    tree_.tvwSECSItem_NodeClick(form::toQt(gem::categoryAt(category).key));
    return window_.state.category == category && window_.state.current.records != nullptr;
}

bool RecordJump::show(const RecordAddress& address) {
    if (window_.state.editing() || gem::kindOf(address.category) == gem::Kind::None) return false;
    underway_ = true;
    const bool arrived = goTo(address);
    underway_ = false;
    onEnded();
    return arrived;
}

bool RecordJump::goTo(const RecordAddress& address) {
    window_.form.tspData->setCurrentIndex(kPropertiesTab - 1);
    const bool there = window_.state.category == address.category;
    if (!there && !load(address.category)) return false;
    auto row = rowOf(address);
    // Another program may have added it since the category was loaded.
    if (!row && there && presentPlace(address) && load(address.category)) row = rowOf(address);
    if (row) {
        records_.showRecord(*row + 1);
        return true;
    }
    window_.form.statusPanel->setText(
        QStringLiteral("%1 is not in \"%2\" any more.")
            .arg(form::toQt(address.id), form::toQt(gem::categoryAt(address.category).caption)));
    return false;
}

}  // namespace stelvan::browser
