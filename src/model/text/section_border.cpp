#include "model/text/section_border.h"

namespace stelvan::model {
namespace {

constexpr std::string_view kBlanks = " \t";

/// Walks over a text by its lexical pieces.
class Walk {
public:
    Walk(std::string_view text, std::size_t at) : text_(text), at_(at) {}

    [[nodiscard]] bool atEnd() const { return at_ >= text_.size(); }
    [[nodiscard]] std::size_t at() const { return at_; }

    /// To the end of the line on which the last bracket is closed.
    void skipStatement() {
        int depth = 0;
        while (!atEnd()) {
            const char c = text_[at_];
            if (c == '#') {
                at_ = lineEnd();
            } else if (c == '"' || c == '\'') {
                skipString(c);
            } else {
                depth += c == '[' || c == '{' ? 1 : c == ']' || c == '}' ? -1 : 0;
                ++at_;
                if (c == '\n' && depth <= 0) return;
            }
        }
    }

    /// Whether the line's first sign is `wanted`.
    [[nodiscard]] bool lineBeginsWith(char wanted) const {
        const std::size_t first = text_.find_first_not_of(kBlanks, at_);
        return first != std::string_view::npos && text_[first] == wanted;
    }

    /// Whether the header of this line has a name of several parts.
    [[nodiscard]] bool isDotted() const {
        Walk inside(text_.substr(0, lineEnd()), at_);
        while (!inside.atEnd()) {
            const char c = text_[inside.at_];
            if (c == '.') return true;
            if (c == ']' || c == '#') return false;
            if (c == '"' || c == '\'') {
                inside.skipString(c);
            } else {
                ++inside.at_;
            }
        }
        return false;
    }

private:
    [[nodiscard]] std::size_t lineEnd() const {
        const std::size_t end = text_.find('\n', at_);
        return end == std::string_view::npos ? text_.size() : end;
    }

    void skipString(char quote) {
        constexpr std::size_t kLongQuote = 3;
        const std::string_view rest = text_.substr(at_);
        const bool isLong = rest.size() >= kLongQuote && rest[1] == quote && rest[2] == quote;
        at_ += isLong ? kLongQuote : 1;
        while (!atEnd()) {
            const char c = text_[at_];
            if (c == '\n' && !isLong) return;
            if (c == '\\' && quote == '"') {
                at_ += 2;
            } else if (c != quote) {
                ++at_;
            } else if (skipQuotes(quote, isLong)) {
                return;
            }
        }
    }

    /// Quotes within a text of several lines may stand alone or in pairs, and right before its end.
    bool skipQuotes(char quote, bool isLong) {
        std::size_t count = 0;
        while (!atEnd() && text_[at_] == quote && count < (isLong ? 5U : 1U)) {
            ++at_;
            ++count;
        }
        return !isLong || count >= 3;
    }

    std::string_view text_;
    std::size_t at_;
};

}  // namespace

std::size_t sectionEnd(std::string_view text, std::size_t begin) {
    Walk walk(text, begin);
    bool first = true;
    while (!walk.atEnd()) {
        if (!first && walk.lineBeginsWith('[') && !walk.isDotted()) return walk.at();
        walk.skipStatement();
        first = false;
    }
    return text.size();
}

}  // namespace stelvan::model
