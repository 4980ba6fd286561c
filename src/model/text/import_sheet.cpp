#include "model/text/import_sheet.h"

#include <algorithm>
#include <map>
#include <optional>
#include <ranges>
#include <set>

#include "base/run_time_error.h"
#include "base/text.h"
#include "base/utf.h"
#include "gem/error_catalogue.h"
#include "gem/formats.h"
#include "gem/ids_and_names.h"
#include "gem/links.h"
#include "gem/schema.h"
#include "gem/stored.h"
#include "model/core/new_rows.h"
#include "model/core/refusal.h"
#include "model/core/sink.h"
#include "model/core/values.h"
#include "model/text/csv.h"
#include "model/text/known_items.h"
#include "model/text/sheets.h"

namespace stelvan::model {
namespace {

namespace variable = gem::schema::variable;

/// In-cell line breaks, which spreadsheets write in their own way.
std::string withPlainBreaks(std::string text) {
    std::erase(text, '\r');
    return text;
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        if (base::nextCharacter(text, at) == 0xFFFD && at == start + 1) return false;
    }
    return true;
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> all;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of(" \t\r\n", at), text.size());
        if (end > at) all.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return all;
}

std::string typeCode(std::string_view text) {
    return base::upperCase(base::trimBlanks(text));
}

/// One line of the sheet that says something new.
struct Edit {
    const CsvRecord* record = nullptr;
    std::size_t row = 0;  // in the table
    bool isNew = false;
    bool fieldsChanged = false;
    std::vector<bool> changed;  // by column of the sheet
    std::string oldName;
    bool wasList = false;
};

class SheetImport {
public:
    SheetImport(Model& model, const std::filesystem::path& file) : model_(model), file_(file) {
        const std::string text = readWhole(file);
        if (!isUtf8(text)) throw Refusal(file.string() + ": is not UTF-8; save it as such");
        try {
            records_ = parseCsv(text);
        } catch (const Refusal& refusal) {
            throw Refusal(file.string() + ", " + refusal.what());
        }
        readHeader();
    }

    void run() {
        findEdits();
        stopAtFaults();
        apply();
        judgeAll();
        stopAtFaults();
        store();
    }

private:
    void fault(std::size_t line, std::string_view column, std::string_view text) {
        const std::string at = column.empty() ? "" : std::string(column) + ": ";
        faults_.push_back(file_.string() + ", line " + std::to_string(line) + ": " + at +
                          std::string(base::trimBlanks(text)));
    }
    void fault(const Edit& edit, const SheetColumn& column, std::string_view text) {
        fault(edit.record->line, column.caption, text);
    }
    void stopAtFaults() {
        if (!faults_.empty()) throw Refusal(std::move(faults_));
    }

    [[nodiscard]] const std::string* cell(const Edit& edit, std::size_t column) const {
        return places_[column] ? &edit.record->cells[*places_[column]] : nullptr;
    }

    void readHeader() {
        if (records_.empty()) throw Refusal(file_.string() + ": is empty; a header row is needed");
        CsvRecord& header = records_.front();
        for (std::string& caption : header.cells) caption = base::trimBlanks(caption);
        const auto has = [&](std::string_view caption) {
            return std::ranges::any_of(
                header.cells, [&](const std::string& one) { return base::sameWord(one, caption); });
        };
        for (const PartFacts& facts : parts()) {
            const auto columns = sheetColumns(facts.kind);
            if (!facts.custom || columns.empty() || !has(columns.front().caption)) continue;
            part_ = facts.part;
            columns_ = columns;
        }
        if (columns_.empty())
            throw Refusal(file_.string() + ", line " + std::to_string(header.line) +
                          ": no column tells the identifiers; expected Variable ID, Event ID, "
                          "Alarm ID or Report ID");
        if (!model_[part_].present)
            throw Refusal("there is no table of " + std::string(factsOf(part_).noun) + "s");
        placeColumns(header);
        kind_ = factsOf(part_).kind;
        for (std::int16_t category = 1; category <= gem::kCategories; ++category)
            if (sheetName(category) == file_.filename() && partOf(category) == part_)
                categoryOfFile_ = category;
    }

    void placeColumns(const CsvRecord& header) {
        places_.assign(columns_.size(), std::nullopt);
        for (std::size_t at = 0; at < header.cells.size(); ++at) {
            const auto known = std::ranges::find_if(columns_, [&](const SheetColumn& column) {
                return base::sameWord(column.caption, header.cells[at]);
            });
            if (known == columns_.end()) {
                if (!header.cells[at].empty())
                    fault(header.line, header.cells[at], "no such column");
                continue;
            }
            auto& place = places_[static_cast<std::size_t>(known - columns_.begin())];
            if (place) fault(header.line, header.cells[at], "stands twice in the header");
            place = at;
        }
        stopAtFaults();
    }

    /// What each line changes, against what the sheet of this model would say.
    void findEdits() {
        const Table& table = model_[part_];
        const CrossReference references(model_);
        SheetCells cells(model_, references, part_);
        std::multimap<std::int64_t, std::size_t> rows;
        for (std::size_t at = 0; at < table.rows.size(); ++at)
            if (const auto id = table.number(table.rows[at], factsOf(part_).id))
                rows.emplace(*id, at);
        std::map<std::int64_t, std::size_t> seen;  // the line of each identifier
        std::size_t newRow = table.rows.size();
        for (CsvRecord& record : records_ | std::views::drop(1)) {
            if (record.cells.size() != records_.front().cells.size()) {
                fault(record.line, "",
                      "has " + std::to_string(record.cells.size()) + " cells; the header has " +
                          std::to_string(records_.front().cells.size()));
                continue;
            }
            for (std::string& one : record.cells)
                one = withPlainBreaks(unguardedCell(std::move(one)));
            Edit edit;
            edit.record = &record;
            edit.changed.assign(columns_.size(), false);
            const std::string idText(base::trimBlanks(*cell(edit, 0)));
            const auto id = wholeNumber(jet::Value(idText));
            if (id && !seen.emplace(*id, record.line).second) {
                fault(edit, columns_.front(),
                      idText + " stands in line " + std::to_string(seen[*id]) + ", too");
                continue;
            }
            const auto found = id ? rows.count(*id) : 0;
            if (found > 1) {
                fault(edit, columns_.front(), "several items have the identifier " + idText);
            } else if (found == 1) {
                edit.row = rows.find(*id)->second;
                addChange(edit, cells);
            } else {
                edit.row = newRow++;
                edit.isNew = edit.fieldsChanged = true;
                for (std::size_t at = 0; at < columns_.size(); ++at)
                    edit.changed[at] = places_[at].has_value();
                edits_.push_back(std::move(edit));
            }
        }
    }

    void addChange(Edit edit, SheetCells& cells) {
        const Table& table = model_[part_];
        const Row& row = table.rows[edit.row];
        if (cells.category(row) == gem::NO_CATEGORY) return;
        const std::vector<std::string> before = cells.of(row);
        bool any = false;
        for (std::size_t at = 1; at < columns_.size(); ++at) {
            const std::string* now = cell(edit, at);
            if (now == nullptr || *now == withPlainBreaks(before[at])) continue;
            if (columns_[at].isLinks && words(*now) == words(before[at])) continue;
            if (columns_[at].isType && typeCode(*now) == before[at]) continue;
            if (columns_[at].isType) {
                fault(edit, columns_[at], "cannot be changed; it is " + before[at]);
                continue;
            }
            edit.changed[at] = any = true;
            edit.fieldsChanged = edit.fieldsChanged || !columns_[at].isLinks;
        }
        edit.oldName = table.text(row, factsOf(part_).name);
        edit.wasList = gem::isList(table.text(row, variable::kFormat));
        if (any) edits_.push_back(std::move(edit));
    }

    /// Gives the changed cells to the rows, as typed, so that every item can be judged among what
    /// all will be.
    void apply() {
        Table& table = model_[part_];
        for (Edit& edit : edits_) {
            if (edit.isNew) {
                table.rows.push_back({{}, std::vector<jet::Value>(table.columns.size())});
                setType(edit);
            }
            Row& row = table.rows[edit.row];
            for (std::size_t at = 0; at < columns_.size(); ++at) {
                const gem::FieldFacts* field = columns_[at].field;
                if (field == nullptr) continue;
                const std::string* text = cell(edit, at);
                if (!edit.changed[at] && !(edit.isNew && text == nullptr)) continue;
                const auto column = table.find(field->column);
                if (column)
                    row.values[*column] = text != nullptr ? *text : std::string();
                else if (text != nullptr && !text->empty())
                    fault(edit, columns_[at], "the file has no column for it");
            }
        }
    }

    void setType(const Edit& edit) {
        if (kind_ != gem::Kind::Variable) return;
        std::string type(categoryOfFile_ != gem::NO_CATEGORY ? gem::categoryAt(categoryOfFile_).type
                                                             : "");
        for (std::size_t at = 0; at < columns_.size(); ++at)
            if (columns_[at].isType)
                if (const std::string* text = cell(edit, at)) type = typeCode(*text);
        Table& table = model_[part_];
        if (const auto column = table.find(variable::kType))
            table.rows[edit.row].values[*column] = type;
    }

    void judgeAll() {
        Table& table = model_[part_];
        KnownItems others(model_, kind_);
        RecordReader reader(part_, table);
        for (const Edit& edit : edits_) {
            gem::Record* record = reader.read(table.rows[edit.row]);
            if (record == nullptr) {
                fault(edit.record->line, "Variable Type", "must be SV, DV or EC");
                continue;
            }
            record->adding = edit.isNew;
            record->loadedName = edit.oldName;
            takeCells(edit, *record);
            judge(edit, *record, others);
            judgeLinks(edit);
            if (edit.fieldsChanged)
                stored_.push_back(gem::columnsOf(*record));
            else
                stored_.emplace_back();
        }
    }

    /// What was typed, where it may be; the reader blanks what the editor does not show.
    void takeCells(const Edit& edit, gem::Record& record) {
        for (std::size_t at = 0; at < columns_.size(); ++at) {
            if (columns_[at].field == nullptr || !edit.changed[at]) continue;
            gem::FieldState& state = record[columns_[at].field->control];
            const std::string& text = *cell(edit, at);
            const bool isFlag = columns_[at].field->stored == gem::Stored::Flag;
            if (isFlag && text != "0" && text != "1" && !(edit.isNew && base::isBlank(text)))
                fault(edit, columns_[at], "must be 0 or 1");
            else if (state.open && !isFlag)
                state.text = text;
            else if (!state.open && !base::isBlank(text))
                fault(edit, columns_[at], "cannot be changed in this item, or with its format");
        }
    }

    void judge(const Edit& edit, gem::Record& record, gem::Others& others) {
        std::map<gem::Control, std::string> failures;
        for (const gem::FieldFacts* field : gem::inOrder(kind_, &gem::Places::judged)) {
            try {
                gem::judge(record, field->control, gem::Moment::Saving, others);
            } catch (const base::RunTimeError& failure) {
                failures[field->control] = failure.what();
            }
        }
        for (const SheetColumn& column : columns_) {
            if (column.field == nullptr) continue;
            const gem::ErrorCode code = record[column.field->control].fault;
            const auto failure = failures.find(column.field->control);
            if (failure != failures.end())
                fault(edit, column, failure->second);
            else if (code != gem::NO_EXCEPTION)
                fault(edit, column, catalogue_[static_cast<std::size_t>(code)].message);
        }
    }

    void judgeLinks(const Edit& edit) {
        if (!linksOf(kind_)) return;
        const std::size_t at = columns_.size() - 1;
        const std::string* text = cell(edit, at);
        const std::vector<std::string> ids =
            text != nullptr ? words(*text) : std::vector<std::string>();
        const bool mustHold = kind_ == gem::Kind::Report && (edit.changed[at] || edit.isNew);
        if (mustHold && ids.empty()) return fault(edit, columns_[at], gem::kMustContainItem);
        if (!edit.changed[at]) return;
        if (kind_ == gem::Kind::Report && gem::isReservedReport(*cell(edit, 0)))
            fault(edit, columns_[at], "belongs to a report of the standard, which is not edited");
        for (const std::string& id : ids) {
            const auto number = wholeNumber(jet::Value(id));
            if (!number || !isTarget(*number))
                fault(edit, columns_[at],
                      "there is no " +
                          std::string(factsOf(targetsOf(*linksOf(kind_)).front()).noun) + " " + id);
        }
    }

    [[nodiscard]] bool isTarget(std::int64_t id) {
        if (targets_.empty())
            for (const Part part : targetsOf(*linksOf(kind_)))
                for (const Row& row : model_[part].rows)
                    if (const auto one = model_[part].number(row, factsOf(part).id))
                        targets_.insert(*one);
        return targets_.contains(id);
    }

    void store() {
        Table& table = model_[part_];
        for (std::size_t at = 0; at < edits_.size(); ++at) {
            const Edit& edit = edits_[at];
            Row& row = table.rows[edit.row];
            const auto put = [&](const gem::ColumnValue& value) {
                if (const auto column = table.find(value.column))
                    std::visit([&](const auto& one) { row.values[*column] = one; }, value.value);
            };
            std::ranges::for_each(stored_[at], put);
            if (edit.isNew) std::ranges::for_each(gem::columnsOfNew(kind_), put);
            if (edit.wasList && !gem::isList(table.text(row, variable::kFormat))) release(row);
            if (linksOf(kind_) && edit.changed.back()) storeLinks(edit, row);
        }
        sortRows(model_);
    }

    /// The children of what is no list any more.
    void release(const Row& list) {
        Table& table = model_[part_];
        const auto parent = table.find(variable::kParentKey);
        const auto id = table.number(list, variable::kId);
        if (!parent || !id) return;
        for (Row& row : table.rows)
            if (wholeNumber(row.values[*parent]) == id) row.values[*parent] = 0;
    }

    /// Link rows that the list keeps stay the rows that they are.
    void storeLinks(const Edit& edit, const Row& owner) {
        const PartFacts& facts = factsOf(*linksOf(kind_));
        Table& links = model_[facts.part];
        const auto ownerAt = links.find(facts.id);
        const auto targetAt = links.find(facts.target);
        const auto placeAt = links.find(facts.order);
        if (!ownerAt || !targetAt) return fault(edit, columns_.back(), "the file has no links");
        const auto id = model_[part_].number(owner, factsOf(part_).id);
        std::multimap<std::int64_t, Row> old;
        std::erase_if(links.rows, [&](Row& link) {
            if (wholeNumber(link.values[*ownerAt]) != id) return false;
            old.emplace(wholeNumber(link.values[*targetAt]).value_or(-1), std::move(link));
            return true;
        });
        std::int32_t place = 0;
        for (const std::string& word : words(*cell(edit, columns_.size() - 1))) {
            const std::int64_t target = *wholeNumber(jet::Value(word));
            Row link{{}, std::vector<jet::Value>(links.columns.size())};
            if (auto known = old.extract(target)) link = std::move(known.mapped());
            link.values[*ownerAt] = static_cast<std::int32_t>(*id);
            link.values[*targetAt] = static_cast<std::int32_t>(target);
            if (placeAt) link.values[*placeAt] = ++place;
            links.rows.push_back(std::move(link));
        }
    }

    Model& model_;
    const std::filesystem::path& file_;
    std::vector<CsvRecord> records_;
    Part part_ = Part::CustomVariables;
    gem::Kind kind_ = gem::Kind::None;
    std::vector<SheetColumn> columns_;
    std::vector<std::optional<std::size_t>> places_;  // of columns_ in the file
    std::int16_t categoryOfFile_ = gem::NO_CATEGORY;
    const gem::ErrorCatalogue catalogue_ = gem::lInitErrInfo();
    std::vector<Edit> edits_;
    std::vector<std::vector<gem::ColumnValue>> stored_;  // of each edit
    std::set<std::int64_t> targets_;
    std::vector<std::string> faults_;
};

}  // namespace

Model withSheet(Model model, const std::filesystem::path& file) {
    SheetImport(model, file).run();
    return model;
}

WritePlan planSheet(jet::Database& database, const std::filesystem::path& file) {
    Model wanted = withSheet(read(database), file);
    switchOffUnsaidFlags(database, wanted);
    return planWrite(database, std::move(wanted));
}

}  // namespace stelvan::model
