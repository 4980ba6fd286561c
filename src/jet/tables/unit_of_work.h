// One unit of work over all handles of this process on a file, or a step within the one that is
// open.
//
// Nests and rolls back as WriteScope does: without commit() of every step nothing reaches the file.
// Enforced relationships are judged when the outermost one commits. What changes memory along with
// the file is taken back by PageFile::onRollback().
#pragma once

#include <memory>

#include "jet/disk/page_file.h"

namespace stelvan::jet {

class Database;  // the face
class SharedDatabase;

class UnitOfWork {
public:
    /// Throws ReadOnly for a handle that was opened for reading, and what WriteScope throws.
    explicit UnitOfWork(Database& database);
    explicit UnitOfWork(std::shared_ptr<SharedDatabase> file);
    ~UnitOfWork();
    UnitOfWork(const UnitOfWork&) = delete;
    UnitOfWork& operator=(const UnitOfWork&) = delete;

    /// Throws MissingParent and HasChildren for what the unit would leave behind, and what
    /// WriteScope::commit() throws.
    void commit();

private:
    std::shared_ptr<SharedDatabase> file_;
    bool outermost_;
    WriteScope scope_;
};

}  // namespace stelvan::jet
