#include "model/text/csv.h"

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "model/core/refusal.h"

namespace stelvan::model {
namespace {

constexpr std::string_view kSeparators = ",;";

/// The separator of which the first line has more, outside quotes.
char separatorOf(std::string_view text) {
    std::size_t commas = 0, semicolons = 0;
    bool quoted = false;
    for (const char c : text) {
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == '\n') break;
        commas += c == ',' ? 1 : 0;
        semicolons += c == ';' ? 1 : 0;
    }
    return semicolons > commas ? ';' : ',';
}

class Parser {
public:
    explicit Parser(std::string_view text) : text_(text), separator_(separatorOf(text)) {}

    std::vector<CsvRecord> parse() {
        std::vector<CsvRecord> records;
        while (at_ < text_.size()) {
            CsvRecord record = readRecord();
            const bool isEmpty = std::ranges::all_of(
                record.cells, [](const std::string& cell) { return cell.empty(); });
            if (!isEmpty) records.push_back(std::move(record));
        }
        return records;
    }

private:
    CsvRecord readRecord() {
        CsvRecord record{line_, {}};
        for (;;) {
            record.cells.push_back(at_ < text_.size() && text_[at_] == '"' ? readQuoted()
                                                                           : readPlain());
            if (at_ < text_.size() && text_[at_] == separator_) {
                ++at_;
                continue;
            }
            endLine();
            return record;
        }
    }

    [[nodiscard]] bool atLineEnd() const {
        return at_ >= text_.size() || text_[at_] == '\n' || text_.substr(at_).starts_with("\r\n");
    }

    void endLine() {
        if (at_ >= text_.size()) return;
        at_ += text_[at_] == '\r' ? 2 : 1;
        ++line_;
    }

    std::string readPlain() {
        const std::size_t start = at_;
        while (!atLineEnd() && text_[at_] != separator_) ++at_;
        return std::string(text_.substr(start, at_ - start));
    }

    std::string readQuoted() {
        const std::size_t start = line_;
        std::string cell;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == '"') {
                ++at_;
                if (at_ >= text_.size() || text_[at_] != '"') {
                    if (atLineEnd() || text_[at_] == separator_) return cell;
                    fail(line_, "a quote ends within a cell; double the quotes of a quoted cell");
                }
            }
            if (text_[at_] == '\n') ++line_;
            cell += text_[at_];
        }
        fail(start, "the quote that begins a cell here is not closed");
    }

    [[noreturn]] static void fail(std::size_t line, const char* what) {
        throw Refusal("line " + std::to_string(line) + ": " + what);
    }

    std::string_view text_;
    char separator_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

}  // namespace

std::vector<CsvRecord> parseCsv(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    return Parser(text).parse();
}

void appendCsv(std::string& out, std::span<const std::string> cells) {
    bool first = true;
    for (const std::string& cell : cells) {
        if (!first) out += kSeparators.front();
        first = false;
        const bool blankAround = cell.starts_with(' ') || cell.ends_with(' ');
        if (!blankAround && cell.find_first_of(",;\"\r\n\t") == std::string::npos) {
            out += cell;
            continue;
        }
        out += '"';
        for (const char c : cell) out.append(c == '"' ? 2 : 1, c);
        out += '"';
    }
    out += "\r\n";
}

std::string guardedCell(std::string text) {
    if (text.empty()) return text;
    const bool maybeFormula = base::contains("=+-@\t\r", text[0]);
    if (text[0] == '\'' || (maybeFormula && !base::isNumeric(text))) text.insert(0, 1, '\'');
    return text;
}

std::string unguardedCell(std::string cell) {
    if (cell.starts_with('\'')) cell.erase(0, 1);
    return cell;
}

}  // namespace stelvan::model
