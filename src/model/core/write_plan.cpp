#include <algorithm>
#include <string>
#include <utility>

#include "jet/rows/value_text.h"
#include "model/core/fit.h"
#include "model/core/refusal.h"
#include "model/core/row_matching.h"
#include "model/core/unique_rows.h"
#include "model/core/write.h"
#include "sql/default_value.h"

namespace stelvan::model {
namespace {

/// Plans one part, and gathers what is wrong with it.
class PartPlanner {
public:
    PartPlanner(Part part, const Whence& whence, std::vector<std::string>& faults)
        : part_(part), whence_(&whence), faults_(&faults) {}

    void plan(const jet::TableInfo& info, const Table& before, Table wanted, Table& after,
              WritePlan::PartPlan& plan) {
        info_ = &info;
        const std::size_t faultsSoFar = faults_->size();
        after = aligned(std::move(wanted));
        if (faults_->size() > faultsSoFar) return;
        complete(before, after, matchRows(part_, before, after), plan);
        judge(after, plan);
    }

private:
    void add(std::size_t row, const std::string& id, const std::string& why) {
        const std::string place = *whence_ ? (*whence_)(part_, row) + ": " : std::string();
        faults_->push_back(place + info_->name + (id.empty() ? "" : " ") + id + ": " + why);
    }

    [[nodiscard]] static std::string idOf(Part part, const Table& table, const Row& row) {
        return table.text(row, factsOf(part).id);
    }

    /// The wanted rows with the columns of the file and values of their types.
    Table aligned(Table wanted) {
        Table table;
        table.present = true;
        table.name = info_->name;
        for (const jet::ColumnInfo& column : info_->columns) table.columns.push_back(column.name);
        given_.assign(info_->columns.size(), false);
        std::vector<std::size_t> to;
        for (const std::string& name : wanted.columns) {
            const auto column = info_->findColumn(name);
            if (!column) {
                faults_->push_back(info_->name + ": the file has no column " + name + ".");
                continue;
            }
            given_[*column] = true;
            to.push_back(*column);
        }
        if (to.size() < wanted.columns.size()) return table;
        table.rows.reserve(wanted.rows.size());
        for (std::size_t at = 0; at < wanted.rows.size(); ++at) {
            const std::string id = idOf(part_, wanted, wanted.rows[at]);
            Row& row = table.rows.emplace_back();
            row.id = wanted.rows[at].id;
            row.values.resize(info_->columns.size());
            for (std::size_t from = 0; from < to.size(); ++from)
                row.values[to[from]] = std::move(wanted.rows[at].values[from]);
            wanted.rows[at].values = {};
            fitRow(at, id, row);
        }
        return table;
    }

    void fitRow(std::size_t at, const std::string& id, Row& row) {
        for (std::size_t column = 0; column < row.values.size(); ++column) {
            if (!given_[column]) continue;
            if (const auto why = fit(info_->columns[column], row.values[column])) add(at, id, *why);
        }
    }

    /// Fills columns that are not given, and finds what differs.
    void complete(const Table& before, Table& after,
                  const std::vector<std::optional<std::size_t>>& partners,
                  WritePlan::PartPlan& plan) const {
        std::vector<bool> kept(before.rows.size(), false);
        for (std::size_t at = 0; at < after.rows.size(); ++at) {
            Row& row = after.rows[at];
            if (!partners[at]) {
                row.id = {};
                fillWithDefaults(row);
                plan.added.push_back(at);
                continue;
            }
            kept[*partners[at]] = true;
            const Row& old = before.rows[*partners[at]];
            row.id = old.id;
            auto columns = fillAndCompare(old, row);
            if (!columns.empty()) plan.changed.push_back({*partners[at], at, std::move(columns)});
        }
        for (std::size_t at = 0; at < kept.size(); ++at)
            if (!kept[at]) plan.removed.push_back(at);
    }

    void fillWithDefaults(Row& row) const {
        for (std::size_t column = 0; column < row.values.size(); ++column)
            if (!given_[column]) row.values[column] = sql::defaultValue(info_->columns[column]);
    }

    [[nodiscard]] std::vector<std::size_t> fillAndCompare(const Row& old, Row& row) const {
        std::vector<std::size_t> columns;
        for (std::size_t column = 0; column < row.values.size(); ++column) {
            if (!given_[column]) {
                row.values[column] = old.values[column];
            } else if (!identical(old.values[column], row.values[column])) {
                columns.push_back(column);
            }
        }
        return columns;
    }

    /// What the table refuses of the rows that are written.
    void judge(const Table& after, const WritePlan::PartPlan& plan) {
        std::vector<std::size_t> all(info_->columns.size());
        for (std::size_t column = 0; column < all.size(); ++column) all[column] = column;
        for (const std::size_t at : plan.added) judgeRow(after, at, all);
        for (const WritePlan::Change& change : plan.changed)
            judgeRow(after, change.after, change.columns);
        judgeTwins(after, plan);
    }

    void judgeRow(const Table& after, std::size_t at, const std::vector<std::size_t>& columns) {
        const Row& row = after.rows[at];
        for (const std::size_t column : columns) {
            const jet::ColumnInfo& facts = info_->columns[column];
            if (facts.autoNumber) continue;
            auto why = brokenProperty(facts, row.values[column]);
            if (!why && jet::isNull(row.values[column]) && isKey(column))
                why = "The column " + facts.name + " cannot hold a Null.";
            if (why) add(at, idOf(part_, after, row), *why);
        }
    }

    /// Whether an index wants a value in this column.
    [[nodiscard]] bool isKey(std::size_t column) const {
        return std::ranges::any_of(info_->indexes, [&](const jet::IndexInfo& index) {
            return (index.primary || index.required) &&
                   std::ranges::count(index.columns, column, &jet::IndexColumn::column) > 0;
        });
    }

    void judgeTwins(const Table& after, const WritePlan::PartPlan& plan) {
        std::vector<bool> written(after.rows.size(), false);
        for (const std::size_t at : plan.added) written[at] = true;
        for (const UniqueIndex& index : UniqueIndex::of(*info_)) {
            bool concerned = !plan.added.empty();
            for (const WritePlan::Change& change : plan.changed) {
                written[change.after] = true;
                concerned |= index.concerns(change.columns);
            }
            if (!concerned) continue;
            for (const auto& [one, other] : index.twins(after.rows))
                if (written[one] || written[other]) addTwins(index, after, one, other);
        }
    }

    void addTwins(const UniqueIndex& index, const Table& after, std::size_t one,
                  std::size_t other) {
        std::string names;
        for (const std::size_t column : index.columns())
            names += (names.empty() ? "" : ", ") + info_->columns[column].name + " " +
                     jet::textOf(after.rows[one].values[column]);
        const std::string id = idOf(part_, after, after.rows[other]);
        add(one, idOf(part_, after, after.rows[one]),
            "Two rows cannot have the same " + names + "; " +
                (*whence_ ? (*whence_)(part_, other) + " has it, too." : id + " has it, too."));
    }

    Part part_;
    const Whence* whence_;
    std::vector<std::string>* faults_;
    const jet::TableInfo* info_ = nullptr;
    std::vector<bool> given_;  // by column of the file
};

}  // namespace

Written WritePlan::rows() const {
    Written sum;
    for (const PartPlan& plan : parts) {
        sum.added += plan.added.size();
        sum.changed += plan.changed.size();
        sum.removed += plan.removed.size();
    }
    return sum;
}

WritePlan planWrite(jet::Database& database, Model wanted, const Whence& whence) {
    WritePlan plan;
    plan.before = read(database);
    plan.whence = whence;
    std::vector<std::string> faults;
    for (const PartFacts& facts : parts()) {
        Table& table = wanted[facts.part];
        const Table& before = plan.before[facts.part];
        if (!table.present) {
            plan.after[facts.part] = before;
        } else if (!before.present) {
            faults.push_back("the file has no table " + table.name + ".");
        } else {
            const jet::TableInfo info = database.table(before.name).info();
            PartPlanner(facts.part, whence, faults)
                .plan(info, before, std::move(table), plan.after[facts.part],
                      plan.parts[indexOf(facts.part)]);
            table = {};
        }
    }
    if (!faults.empty()) throw Refusal(std::move(faults));
    return plan;
}

}  // namespace stelvan::model
