#include "model/core/write.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "jet/disk/error.h"
#include "model/core/refusal.h"
#include "model/core/row_exchange.h"

namespace stelvan::model {
namespace {

constexpr std::size_t kTellEvery = 1000;

/// Carries the plan of one part out, kind of change by kind: what goes makes room for what comes.
class PartWriter {
public:
    PartWriter(Part part, jet::Database& database, const WritePlan& plan)
        : part_(part),
          whence_(&plan.whence),
          plan_(&plan[part]),
          before_(&plan.before[part]),
          after_(&plan.after[part]),
          table_(&database.table(before_->name)) {}

    void erase() {
        for (const std::size_t at : plan_->removed)
            named(before_->rows[at], [&] { table_->erase(before_->rows[at].id); });
    }

    void change() {
        if (plan_->changed.empty()) return;
        const jet::TableInfo info = table_->info();
        for (const ParkedRow& row : parkedRows(info, *before_, *after_, plan_->changed))
            update(before_->rows[row.before], row.values);
        std::vector<jet::ColumnValue> values;
        for (const WritePlan::Change& change : plan_->changed) {
            const Row& row = after_->rows[change.after];
            values.clear();
            for (const std::size_t column : change.columns)
                values.emplace_back(column, row.values[column]);
            update(row, values);
        }
    }

    void insert(const Progress& progress) {
        std::vector<jet::ColumnValue> values;
        std::size_t done = 0;
        for (const std::size_t at : plan_->added) {
            if (done++ % kTellEvery == 0)
                tell(progress, "writing " + after_->name, done, plan_->added.size());
            const Row& row = after_->rows[at];
            values.clear();
            for (std::size_t column = 0; column < row.values.size(); ++column)
                if (!jet::isNull(row.values[column]))
                    values.emplace_back(column, row.values[column]);
            named(row, [&] { table_->insert(values); });
        }
    }

private:
    void update(const Row& row, const std::vector<jet::ColumnValue>& values) {
        named(row, [&] { table_->update(row.id, values); });
    }

    /// A row that the file refuses is named; one that is gone went with another by a relationship.
    template <class Body>
    void named(const Row& row, const Body& body) const {
        using Kind = jet::ErrorKind;
        constexpr Kind kOfRow[] = {
            Kind::DuplicateKey,    Kind::NullInKey,   Kind::NullInRequired,
            Kind::ZeroLength,      Kind::TextTooLong, Kind::TypeMismatch,
            Kind::NumericOverflow, Kind::RowTooLarge, Kind::UnsupportedOrder};
        try {
            body();
        } catch (const jet::Error& error) {
            if (error.kind() == Kind::RowGone) return;
            if (std::ranges::count(kOfRow, error.kind()) == 0) throw;
            throw Refusal(whenceOf(row) + after_->name + " " +
                          after_->text(row, factsOf(part_).id) + ": " + error.what());
        }
    }

    [[nodiscard]] std::string whenceOf(const Row& row) const {
        const bool wanted =
            &row >= after_->rows.data() && &row < after_->rows.data() + after_->rows.size();
        if (!*whence_ || !wanted) return {};
        return (*whence_)(part_, static_cast<std::size_t>(&row - after_->rows.data())) + ": ";
    }

    Part part_;
    const Whence* whence_;
    const WritePlan::PartPlan* plan_;
    const Table* before_;
    const Table* after_;
    jet::Table* table_;
};

void carryOut(jet::Database& database, const WritePlan& plan, const Progress& progress) {
    std::vector<PartWriter> writers;
    for (const PartFacts& facts : parts())
        if (plan.after[facts.part].present) writers.emplace_back(facts.part, database, plan);
    // Links lie behind the items that they belong to: they go before and come after them.
    for (PartWriter& writer : writers | std::views::reverse) writer.erase();
    for (PartWriter& writer : writers) writer.change();
    for (PartWriter& writer : writers) writer.insert(progress);
}

/// Whether changing one row can change others.
bool anyCascade(jet::Database& database) {
    return std::ranges::any_of(
        database.relationships(), [](const jet::RelationshipInfo& relationship) {
            return relationship.enforced &&
                   (relationship.cascadeUpdates || relationship.cascadeDeletes);
        });
}

}  // namespace

void apply(jet::Database& database, const WritePlan& plan, const Progress& progress) {
    jet::UnitOfWork unit(database);
    carryOut(database, plan, progress);
    // What followed by relationships is put right as long as there is something to put right.
    constexpr int kMostRounds = 4;
    for (int round = 0; round < kMostRounds && anyCascade(database); ++round) {
        const WritePlan rest = planWrite(database, plan.after);
        if (rest.rows() == Written{}) break;
        carryOut(database, rest, progress);
    }
    unit.commit();
}

Written write(jet::Database& database, Model wanted, const Whence& whence,
              const Progress& progress) {
    jet::UnitOfWork unit(database);
    const WritePlan plan = planWrite(database, std::move(wanted), whence);
    apply(database, plan, progress);
    unit.commit();
    return plan.rows();
}

}  // namespace stelvan::model
