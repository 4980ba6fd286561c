#include <memory>

#include "jet/database.h"
#include "jet/database_impl.h"

namespace stelvan::jet {

struct UnitOfWork::State {
    explicit State(std::shared_ptr<SharedDatabase> shared)
        : file(std::move(shared)), scope(file->sharedPages()) {}
    std::shared_ptr<SharedDatabase> file;
    WriteScope scope;
};

UnitOfWork::UnitOfWork(Database& database) {
    database.impl().requireWritable();
    state_ = std::make_unique<State>(database.impl().file);
}

UnitOfWork::~UnitOfWork() = default;

void UnitOfWork::commit() {
    state_->scope.commit();
}

}  // namespace stelvan::jet
