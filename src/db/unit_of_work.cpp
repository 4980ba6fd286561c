#include "db/connection.h"
#include "db/error_map.h"
#include "jet/database.h"

namespace stelvan::db {

struct UnitOfWork::State {
    explicit State(const std::string& path) : database(jet::Database::open(path)), unit(database) {}

    jet::Database database;
    jet::UnitOfWork unit;
};

UnitOfWork::UnitOfWork(const std::string& path)
    : state_(translated(Through::Statement, [&path] { return std::make_unique<State>(path); })) {}

UnitOfWork::~UnitOfWork() = default;

void UnitOfWork::commit() {
    translated(Through::Statement, [this] { state_->unit.commit(); });
}

}  // namespace stelvan::db
