#include <algorithm>
#include <utility>
#include <vector>

#include "db/connection.h"
#include "db/error_map.h"
#include "db/undo_log.h"
#include "jet/database.h"

namespace stelvan::db {

namespace {

/// The undo steps of the units of work open on one file; the outermost unit decides.
struct OpenUnits {
    std::filesystem::path file;
    int depth = 0;
    bool failed = false;
    std::vector<std::function<void()>> undo;
};

std::vector<OpenUnits>& openUnits() {
    thread_local std::vector<OpenUnits> units;
    return units;
}

OpenUnits* unitsOn(const std::filesystem::path& file) {
    for (OpenUnits& units : openUnits()) {
        if (units.file == file) return &units;
    }
    return nullptr;
}

void enter(const std::filesystem::path& file) {
    OpenUnits* units = unitsOn(file);
    if (units == nullptr) units = &openUnits().emplace_back(OpenUnits{file, 0, false, {}});
    ++units->depth;
}

void leave(const std::filesystem::path& file, bool committed) {
    OpenUnits* units = unitsOn(file);
    units->failed = units->failed || !committed;
    if (--units->depth > 0) return;
    OpenUnits ended = std::move(*units);
    std::erase_if(openUnits(), [](const OpenUnits& open) { return open.depth == 0; });
    if (!ended.failed) return;
    std::reverse(ended.undo.begin(), ended.undo.end());
    for (const auto& step : ended.undo) step();
}

}  // namespace

void UndoLog::add(const std::filesystem::path& file, std::function<void()> undo) {
    if (OpenUnits* units = unitsOn(file)) units->undo.push_back(std::move(undo));
}

struct UnitOfWork::State {
    explicit State(const std::string& path)
        : database(jet::Database::open(path)), unit(std::in_place, database) {
        enter(database.path());
    }
    ~State() {
        unit.reset();  // rolls back unless committed
        leave(database.path(), committed);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    jet::Database database;
    std::optional<jet::UnitOfWork> unit;
    bool committed = false;
};

UnitOfWork::UnitOfWork(const std::string& path)
    : state_(translated(Through::Statement, [&path] { return std::make_unique<State>(path); })) {}

UnitOfWork::~UnitOfWork() = default;

void UnitOfWork::commit() {
    translated(Through::Statement, [this] { state_->unit->commit(); });
    state_->committed = true;
}

}  // namespace stelvan::db
