#include "db/undo.h"

#include <utility>

#include "db/error_map.h"
#include "jet/database.h"
#include "jet/row_changes.h"

namespace stelvan::db {
namespace {

constexpr const char* kChangedSince =
    " cannot be undone: what it touched has been changed since, here or by another program. Look "
    "at "
    "the records and change them by hand.";

bool isConflict(const jet::Error& failure) {
    return failure.kind() == jet::ErrorKind::RowChanged ||
           failure.kind() == jet::ErrorKind::RowGone ||
           failure.kind() == jet::ErrorKind::DuplicateKey;
}

}  // namespace

void UndoHistory::add(std::string what, jet::RowChanges changes, UnitSubject subject) {
    if (changes.empty()) return;
    done_.push_back({std::move(what), std::move(changes), std::move(subject)});
    if (done_.size() > kMost) done_.erase(done_.begin());
}

DoneUnit UndoHistory::undo(const std::string& path) {
    if (empty()) throw std::logic_error("nothing is left to undo");
    std::vector<DoneUnit> kept = done_;
    DoneUnit last = std::move(kept.back());
    kept.pop_back();
    std::vector<jet::RowChanges*> earlier;
    for (DoneUnit& unit : kept) earlier.push_back(&unit.changes);
    translated(Through::Statement, [&] {
        jet::Database database = jet::Database::open(path);
        jet::UnitOfWork unit(database);
        try {
            jet::takeBack(database, last.changes, earlier);
        } catch (const jet::Error& failure) {
            if (isConflict(failure))
                throw base::RunTimeError(provider::kRowChanged, last.what + kChangedSince);
            throw;
        }
        unit.commit();
    });
    done_ = std::move(kept);
    return last;
}

}  // namespace stelvan::db
