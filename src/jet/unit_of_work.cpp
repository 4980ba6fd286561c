#include <memory>

#include "jet/database.h"
#include "jet/database_impl.h"
#include "jet/tables/unit_scope.h"

namespace stelvan::jet {

struct UnitOfWork::State {
    explicit State(std::shared_ptr<SharedDatabase> shared)
        : file(std::move(shared)), scope(*file) {}
    std::shared_ptr<SharedDatabase> file;
    UnitScope scope;
};

UnitOfWork::UnitOfWork(Database& database) {
    requireWritable(database.access(), *database.impl().file);
    state_ = std::make_unique<State>(database.impl().file);
}

UnitOfWork::~UnitOfWork() = default;

void UnitOfWork::commit() {
    state_->scope.commit();
}

}  // namespace stelvan::jet
