#include "jet/tables/row_cursors.h"

namespace stelvan::jet {

namespace {

constexpr std::size_t kPagesBetweenReleases = 256;

class ScanCursor final : public RowCursor {
public:
    ScanCursor(std::shared_ptr<SharedDatabase> file, std::shared_ptr<const TableDef> definition,
               const ColumnSet& wanted)
        : RowCursor(std::move(file), std::move(definition), wanted), scan_(pages(), table()) {}

    bool next() override {
        if (!scan_.next([this](std::size_t read) { releasePages(read); })) return false;
        stand(scan_.id(), scan_.row());
        return true;
    }

private:
    TableScan scan_;
};

class SingleCursor final : public RowCursor {
public:
    using RowCursor::RowCursor;

    bool find(RowId id) {
        const auto row = locateRow(pages(), table(), id);
        if (row) stand(id, *row);
        return row.has_value();
    }
    bool next() override { return false; }
};

class IndexCursor final : public RowCursor {
public:
    IndexCursor(std::shared_ptr<SharedDatabase> file, std::shared_ptr<const TableDef> definition,
                std::vector<TreeCursor> entries, const ColumnSet& wanted)
        : RowCursor(std::move(file), std::move(definition), wanted), entries_(std::move(entries)) {}

    bool next() override {
        releasePages(++read_);
        while (!entries_[current_].next()) {
            if (++current_ == entries_.size()) return stayAtEnd();
        }
        const RowId id = entries_[current_].rowId();
        const auto row = locateRow(pages(), table(), id);
        if (!row) throwCorrupt(id.page, "an index names a row that does not exist.");
        stand(id, *row);
        return true;
    }

private:
    bool stayAtEnd() {
        --current_;
        return false;
    }

    std::vector<TreeCursor> entries_;
    std::size_t current_ = 0;
    std::size_t read_ = 0;
};

class EmptyCursor final : public Cursor {
public:
    bool next() override { return false; }
    [[nodiscard]] RowId rowId() const override { return {}; }
    [[nodiscard]] ValueView value(std::size_t) override { return Null{}; }
};

}  // namespace

RowCursor::RowCursor(std::shared_ptr<SharedDatabase> file, std::shared_ptr<const TableDef> table,
                     const ColumnSet& wanted)
    : file_(std::move(file)),
      scope_(file_->sharedPages()),
      table_(std::move(table)),
      reader_(file_->pages(), table_, wanted) {
    ++file_->cursors;
}

RowCursor::~RowCursor() {
    --file_->cursors;
}

void RowCursor::releasePages(std::size_t read) {
    if (read > 0 && read % kPagesBetweenReleases == 0 && file_->cursors == 1) pages().release();
}

std::unique_ptr<Cursor> makeScanCursor(std::shared_ptr<SharedDatabase> file,
                                       std::shared_ptr<const TableDef> table,
                                       const ColumnSet& wanted) {
    return std::make_unique<ScanCursor>(std::move(file), std::move(table), wanted);
}

std::unique_ptr<Cursor> makeRowCursor(std::shared_ptr<SharedDatabase> file,
                                      std::shared_ptr<const TableDef> table, RowId id,
                                      const ColumnSet& wanted) {
    auto cursor = std::make_unique<SingleCursor>(std::move(file), std::move(table), wanted);
    if (!cursor->find(id)) return nullptr;
    return cursor;
}

std::unique_ptr<Cursor> makeIndexCursor(std::shared_ptr<SharedDatabase> file,
                                        std::shared_ptr<const TableDef> table,
                                        std::vector<TreeCursor> entries, const ColumnSet& wanted) {
    return std::make_unique<IndexCursor>(std::move(file), std::move(table), std::move(entries),
                                         wanted);
}

std::unique_ptr<Cursor> makeEmptyCursor() {
    return std::make_unique<EmptyCursor>();
}

}  // namespace stelvan::jet
