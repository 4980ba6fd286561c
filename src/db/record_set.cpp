#include "db/record_set.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

#include "base/text.h"
#include "db/computed_rows.h"
#include "db/connection_impl.h"
#include "db/error_map.h"
#include "db/record_cursor.h"
#include "db/record_store.h"
#include "db/table_rows.h"
#include "sql/dialect.h"

namespace stelvan::db {

namespace {

std::shared_ptr<RecordStore> storeOf(const std::shared_ptr<OpenDatabase>& database,
                                     const std::string& sql, Reading reading) {
    const sql::Take take = reading == Reading::AtOnce ? sql::Take::Values : sql::Take::Places;
    sql::Selection selection = database->engine().select(sql, take);
    if (auto* rows = std::get_if<sql::RowPlaces>(&selection)) {
        auto source =
            std::make_unique<TableRows>(database, sql, rows->table, std::move(rows->columns));
        return std::make_shared<RecordStore>(std::move(source),
                                             PlacesNow{rows->moment, std::move(rows->places)},
                                             std::move(rows->rows));
    }
    auto source = std::make_unique<ComputedRows>(std::get<sql::ComputedRows>(std::move(selection)));
    const PlacesNow chosen = source->chosenNow();
    return std::make_shared<RecordStore>(std::move(source), chosen);
}

}  // namespace

struct Recordset::Impl {
    std::shared_ptr<RecordStore> store;  // null while closed
    std::optional<RecordCursor> cursor;
    RecordCursor::Place beforeAdding;
    bool readOnly = false;
    Reading reading = Reading::AtOnce;
    Bookmark reached = 0;  // the record that was looked at since the cursor came to it

    void requireOpen() const {
        if (store == nullptr) throw objectClosed();
    }
    void requireUpdatable() const {
        requireOpen();
        if (readOnly || store->source().writer() == nullptr) throw notUpdatable();
    }
    /// Moving on would leave pending changes behind, neither written nor dropped.
    void leaveCurrent() {
        requireOpen();
        if (cursor->onRecord() && store->pending(cursor->current())) throw notAllowedHere();
        reached = 0;
    }
    /// Before the current record is looked at, for the first time since the cursor came to it.
    void reach() {
        const Bookmark bookmark = cursor->current();
        if (reading == Reading::AtOnce || reached == bookmark) return;
        translated(Through::RecordSet, [&] { store->reach(bookmark); });
        reached = bookmark;
    }
    [[nodiscard]] std::size_t fieldPosition(const std::string& name) const;
    [[nodiscard]] Value valueAt(Bookmark bookmark, std::size_t field) const;
};

std::size_t Recordset::Impl::fieldPosition(const std::string& name) const {
    requireOpen();
    const auto& fields = store->source().fields();
    const auto found =
        std::find_if(fields.begin(), fields.end(),
                     [&name](const std::string& field) { return base::sameWord(field, name); });
    if (found == fields.end()) throw noSuchItem(name);
    return static_cast<std::size_t>(found - fields.begin());
}

Value Recordset::Impl::valueAt(Bookmark bookmark, std::size_t field) const {
    if (field >= store->source().fields().size()) throw noSuchItem();
    std::optional<Value> value =
        translated(Through::RecordSet, [&] { return store->value(bookmark, field); });
    if (!value) throw noCurrentRecord();  // deleted before it was looked at
    return *std::move(value);
}

Recordset::Recordset() : impl_(std::make_unique<Impl>()) {}
Recordset::~Recordset() = default;

void Recordset::open(const std::string& sql, Connection& connection, CursorType, LockType lock,
                     Reading reading) {
    if (impl_->store != nullptr) throw objectOpen();
    const std::shared_ptr<OpenDatabase> database = connection.impl().usable();
    impl_->store = translated(Through::Statement, [&] { return storeOf(database, sql, reading); });
    impl_->cursor.emplace(impl_->store);
    impl_->readOnly = lock == LockType::ReadOnly;
    impl_->reading = reading;
}

ObjectState Recordset::state() const {
    return impl_->store == nullptr ? ObjectState::Closed : ObjectState::Open;
}

void Recordset::close() {
    impl_->requireOpen();
    if (impl_->cursor->onRecord() && impl_->store->pending(impl_->cursor->current()))
        impl_->store->cancel();
    impl_->cursor.reset();
    impl_->store.reset();
}

std::int32_t Recordset::recordCount() const {
    impl_->requireOpen();
    return static_cast<std::int32_t>(impl_->cursor->count());
}

bool Recordset::bof() const {
    impl_->requireOpen();
    return impl_->cursor->bof();
}

bool Recordset::eof() const {
    impl_->requireOpen();
    return impl_->cursor->eof();
}

bool Recordset::onRecord() const {
    impl_->requireOpen();
    return impl_->cursor->onRecord();
}

std::int32_t Recordset::position() const {
    impl_->requireOpen();
    return static_cast<std::int32_t>(impl_->cursor->position());
}

void Recordset::moveFirst() {
    impl_->leaveCurrent();
    impl_->cursor->first();
}

void Recordset::moveLast() {
    impl_->leaveCurrent();
    impl_->cursor->last();
}

void Recordset::moveNext() {
    impl_->leaveCurrent();
    impl_->cursor->next();
}

void Recordset::movePrevious() {
    impl_->leaveCurrent();
    impl_->cursor->previous();
}

Bookmark Recordset::bookmark() const {
    impl_->requireOpen();
    return impl_->cursor->current();
}

void Recordset::setBookmark(Bookmark bookmark) {
    impl_->leaveCurrent();
    impl_->cursor->moveTo(bookmark);
}

std::size_t Recordset::fieldCount() const {
    impl_->requireOpen();
    return impl_->store->source().fields().size();
}

const std::string& Recordset::fieldName(std::size_t index) const {
    if (index >= fieldCount()) throw noSuchItem();
    return impl_->store->source().fields()[index];
}

Value Recordset::field(const std::string& name) const {
    return field(impl_->fieldPosition(name));
}

Value Recordset::field(std::size_t index) const {
    impl_->requireOpen();
    if (index >= impl_->store->source().fields().size()) throw noSuchItem();
    impl_->reach();
    return impl_->valueAt(impl_->cursor->current(), index);
}

void Recordset::setField(const std::string& name, const Value& value) {
    impl_->requireUpdatable();
    const std::size_t field = impl_->fieldPosition(name);
    const Bookmark bookmark = impl_->cursor->current();
    if (impl_->store->pending() && !impl_->store->pending(bookmark)) throw notAllowedHere();
    impl_->reach();
    translated(Through::RecordSet, [&] { impl_->store->change(bookmark, field, value); });
}

void Recordset::addNew() {
    impl_->requireUpdatable();
    if (impl_->store->pending()) throw notAllowedHere();
    impl_->beforeAdding = impl_->cursor->place();
    impl_->cursor->include(translated(Through::RecordSet, [this] { return impl_->store->add(); }));
}

bool Recordset::editPending() const {
    return onRecord() && impl_->store->pending(impl_->cursor->current());
}

void Recordset::update() {
    impl_->requireUpdatable();
    if (!impl_->store->pending(impl_->cursor->current())) return;
    translated(Through::RecordSet, [this] { impl_->store->write(); });
}

void Recordset::deleteCurrent() {
    impl_->requireUpdatable();
    const Bookmark bookmark = impl_->cursor->current();
    if (impl_->store->adding(bookmark)) return cancelUpdate();
    translated(Through::RecordSet, [&] { impl_->store->erase(bookmark); });
}

void Recordset::cancelUpdate() {
    impl_->requireOpen();
    if (!editPending()) return;
    const bool adding = impl_->store->adding(impl_->cursor->current());
    impl_->store->cancel();
    if (adding) impl_->cursor->returnTo(impl_->beforeAdding);
}

void Recordset::cancelBatch(Affect) {
    cancelUpdate();
}

void Recordset::resync() {
    impl_->requireOpen();
    translated(Through::RecordSet, [this] { impl_->store->refresh(); });
    impl_->reached = 0;
    impl_->cursor->settle();
}

void Recordset::resyncCurrent() {
    impl_->requireOpen();
    const Bookmark bookmark = impl_->cursor->current();
    translated(Through::RecordSet, [&] { impl_->store->refresh(bookmark); });
}

void Recordset::setFilter(const std::string& filter) {
    impl_->leaveCurrent();
    if (filter.empty()) return impl_->cursor->showAll();
    const RecordFilter parsed = RecordFilter::parse(filter);
    const std::size_t field = impl_->fieldPosition(parsed.column);
    translated(Through::RecordSet, [&] { impl_->cursor->filter(field, parsed); });
}

std::shared_ptr<Recordset> Recordset::clone() const {
    impl_->requireOpen();
    auto copy = std::make_shared<Recordset>();
    copy->impl_->store = impl_->store;
    copy->impl_->cursor.emplace(impl_->store);
    copy->impl_->readOnly = impl_->readOnly;
    copy->impl_->reading = impl_->reading;
    return copy;
}

std::int32_t Recordset::storedCount() const {
    impl_->requireOpen();
    const std::size_t count = impl_->cursor->count();
    const bool adding = count > 0 && impl_->store->adding(impl_->cursor->at(count - 1));
    return static_cast<std::int32_t>(adding ? count - 1 : count);
}

Value Recordset::storedField(std::int32_t row, std::size_t index) const {
    if (row < 0 || row >= storedCount() || index >= fieldCount()) throw noSuchItem();
    const Bookmark bookmark = impl_->cursor->at(static_cast<std::size_t>(row));
    const Row* values =
        translated(Through::RecordSet, [&] { return impl_->store->stored(bookmark); });
    if (values == nullptr) throw noCurrentRecord();
    return (*values)[index];
}

Bookmark Recordset::storedBookmark(std::int32_t row) const {
    if (row < 0 || row >= storedCount()) throw noSuchItem();
    return impl_->cursor->at(static_cast<std::size_t>(row));
}

void Recordset::eachStored(std::span<const std::int32_t> rows, const Look& look) const {
    std::vector<Bookmark> bookmarks;
    bookmarks.reserve(rows.size());
    for (const std::int32_t row : rows) bookmarks.push_back(storedBookmark(row));
    translated(Through::RecordSet, [&] { impl_->store->look(bookmarks, look); });
}

std::optional<jet::RowId> Recordset::place() const {
    if (!onRecord() || impl_->store->source().writer() == nullptr) return std::nullopt;
    const Bookmark bookmark = impl_->cursor->current();
    if (impl_->store->adding(bookmark)) return std::nullopt;
    return impl_->store->placeOf(bookmark);
}

std::optional<std::int32_t> Recordset::storedAt(jet::RowId place) const {
    if (impl_->store == nullptr || impl_->store->source().writer() == nullptr) return std::nullopt;
    for (std::int32_t row = 0; row < storedCount(); ++row)
        if (impl_->store->placeOf(storedBookmark(row)) == place) return row;
    return std::nullopt;
}

}  // namespace stelvan::db
