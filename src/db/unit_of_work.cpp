#include <optional>

#include "db/connection.h"
#include "db/error_map.h"
#include "jet/database.h"
#include "jet/row_changes.h"

namespace stelvan::db {

struct UnitOfWork::State {
    State(const std::string& path, Notes notes)
        : database(jet::Database::open(path)), unit(database) {
        if (notes == Notes::RowChanges) recorder.emplace(database);
    }

    jet::Database database;
    std::optional<jet::RowChangeRecorder> recorder;
    jet::UnitOfWork unit;
};

UnitOfWork::UnitOfWork(const std::string& path, Notes notes)
    : state_(translated(Through::Statement, [&] { return std::make_unique<State>(path, notes); })) {
}

UnitOfWork::~UnitOfWork() = default;

void UnitOfWork::commit() {
    translated(Through::Statement, [this] { state_->unit.commit(); });
}

jet::RowChanges UnitOfWork::changes() {
    return state_->recorder ? state_->recorder->take() : jet::RowChanges();
}

}  // namespace stelvan::db
