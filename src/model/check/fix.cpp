#include "model/check/fix.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <fstream>
#include <optional>

#include "gem/schema.h"
#include "model/check/check.h"
#include "model/check/links.h"
#include "model/check/lists.h"
#include "model/core/refusal.h"
#include "model/core/whole_copy.h"

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;
namespace variable = gem::schema::variable;

std::string orNull(const std::string& text) {
    return text.empty() ? "Null" : text;
}

/// A fix that says about which item it is; of a link that is its owner.
Fix about(const Item& item, std::string rule, const std::optional<Item>& named) {
    Fix fix;
    fix.rule = std::move(rule);
    fix.table = item.table->name;
    fix.id = item.table->value(*item.row, factsOf(item.part).id);
    fix.name = named ? named->name() : std::string();
    return fix;
}

class Plan {
public:
    explicit Plan(const Model& model) : model_(model), references_(model) {}

    std::vector<Fix> make() {
        releaseOrphans();
        numberChildren();
        mendLinks(Part::EventReports);
        mendLinks(Part::ReportVariables);
        return std::move(fixes_);
    }

private:
    void releaseOrphans() {
        const Table& table = model_[Part::CustomVariables];
        const std::vector<Held> held = holdings(model_, references_);
        for (std::size_t at = 0; at < held.size(); ++at) {
            if (held[at] != Held::Orphan) continue;
            const Item item{Part::CustomVariables, &table, &table.rows[at]};
            Fix fix = about(item, "orphan-child", item);
            fix.text = "released from " + orNull(item.text(variable::kParentKey)) +
                       ", which does not exist";
            for (const char* column : {variable::kParentKey, variable::kAccessId})
                if (table.find(column)) fix.set.push_back({item.row->id, column, 0});
            fixes_.push_back(std::move(fix));
        }
    }

    void numberChildren() {
        for (const ListsChildren& list : childrenByList(references_))
            number(list.children, variable::kAccessId, "child items",
                   about(list.list, "order-gap", list.list));
    }

    /// Gives the items the places 1 to n where they do not have them.
    void number(const std::vector<Item>& items, std::string_view column, const char* what,
                Fix fix) {
        if (items.empty() || countsFromOne(items, column)) return;
        fix.text =
            std::string("numbered the ") + what + " from 1 to " + std::to_string(items.size());
        std::int32_t place = 0;
        for (const Item& item : items)
            if (item.number(column) != ++place)
                fix.set.push_back({item.row->id, std::string(column), place});
        fixes_.push_back(std::move(fix));
    }

    void mendLinks(Part part) {
        const PartFacts& facts = factsOf(part);
        const LinkView view(model_, references_, part);
        for (const Item& link : view.all())
            if (const std::vector<LinkEnd> missing = view.missingEnds(link); !missing.empty())
                remove(view, link, missing.front().rule,
                       "removed the link from " + orNull(link.idText()) + " to " +
                           orNull(link.text(facts.target)) + ": there is no such " +
                           std::string(missing.front().noun));
        for (const OwnersLinks& links : view.byOwner()) mendOwner(view, facts, links);
    }

    void mendOwner(const LinkView& view, const PartFacts& facts, const OwnersLinks& links) {
        const auto isDangling = [&](const Item& link) { return !view.missingEnds(link).empty(); };
        for (const Item& link : links.doubled)
            if (!isDangling(link))
                remove(view, link, "duplicate-link",
                       "removed the second link to " + link.text(facts.target) + " at place " +
                           orNull(link.text(facts.order)));
        std::vector<Item> staying = links.kept;
        std::erase_if(staying, isDangling);
        if (staying.empty()) return;
        number(staying, facts.order, "links",
               about(staying.front(), "order-gap", view.ownerOf(staying.front())));
    }

    void remove(const LinkView& view, const Item& link, std::string_view rule, std::string text) {
        Fix fix = about(link, std::string(rule), view.ownerOf(link));
        fix.text = std::move(text);
        fix.erased.push_back(link.row->id);
        fixes_.push_back(std::move(fix));
    }

    const Model& model_;
    const CrossReference references_;
    std::vector<Fix> fixes_;
};

void carryOut(jet::Database& database, const std::vector<Fix>& fixes) {
    for (const Fix& fix : fixes) {
        jet::Table& table = database.table(fix.table);
        const jet::TableInfo info = table.info();
        for (const Fix::NewValue& change : fix.set)
            table.update(change.row, std::array{jet::ColumnValue{
                                         info.findColumn(change.column).value(), change.value}});
        for (const jet::RowId row : fix.erased) table.erase(row);
    }
}

fs::path freeName(const fs::path& file) {
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    std::array<char, 32> stamp{};
    std::strftime(stamp.data(), stamp.size(), ".before-fix-%Y%m%d-%H%M%S", &local);
    const std::string wanted = file.string() + stamp.data();
    for (int number = 1;; ++number) {
        const std::string name = number == 1 ? wanted : wanted + "-" + std::to_string(number);
        if (!fs::exists(fs::symlink_status(name))) return name;
    }
}

void requireSound(const fs::path& file) {
    if (needsAction(checkStructure(file)))
        throw Refusal(file.string() +
                      ": its structure is damaged, see check --structure; nothing was changed");
}

}  // namespace

std::vector<Fix> fixesFor(const Model& model) {
    if (!canFollow(model))
        throw Refusal(
            "tables or columns are missing, see check --model; nothing can be mended without them");
    return Plan(model).make();
}

FixResult fix(const fs::path& file) {
    requireSound(file);
    jet::Database database = jet::Database::open(file, jet::Access::ReadWrite);
    // From here on nobody else writes: what is planned and copied is what is changed.
    jet::UnitOfWork unit(database);
    FixResult result{fixesFor(read(database)), {}};
    if (result.fixes.empty()) return result;
    result.copy = freeName(database.path());
    copyWhole(database.path(), result.copy);
    try {
        carryOut(database, result.fixes);
        unit.commit();
    } catch (...) {
        std::error_code ignored;
        fs::remove(result.copy, ignored);
        throw;
    }
    return result;
}

}  // namespace stelvan::model
