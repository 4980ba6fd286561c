#include "jet/tables/unit_of_work.h"

#include <utility>

#include "jet/tables/shared_database.h"

namespace stelvan::jet {

UnitOfWork::UnitOfWork(std::shared_ptr<SharedDatabase> file)
    : file_(std::move(file)), outermost_(!file_->pages().inUnit()), scope_(file_->sharedPages()) {}

UnitOfWork::~UnitOfWork() {
    if (outermost_) file_->writer().forget();
}

void UnitOfWork::commit() {
    if (outermost_) file_->writer().judge();
    scope_.commit();
}

}  // namespace stelvan::jet
