#include "sql/like.h"

#include <algorithm>

#include "base/utf.h"
#include "jet/index/collation.h"

namespace stelvan::sql {

namespace {

/// The first character of a UTF-8 text.
std::string_view firstCharacter(std::string_view text) {
    std::size_t end = 0;
    static_cast<void>(base::nextCharacter(text, end));
    return text.substr(0, end);
}

bool sameCharacter(std::string_view left, std::string_view right) {
    if (left == right) return true;
    const bool ascii = left.size() == 1 && right.size() == 1;
    if (ascii && (left == " " || right == " "))
        return false;  // the order does not count trailing blanks
    return jet::compareText(left, right) == 0;
}

bool within(std::string_view character, std::string_view low, std::string_view high) {
    return jet::compareText(low, character) <= 0 && jet::compareText(character, high) <= 0;
}

/// Whether a character belongs to the set between the brackets.
bool inSet(std::string_view character, std::string_view set) {
    const bool negated = set.starts_with('!') || set.starts_with('^');
    if (negated) set.remove_prefix(1);
    bool found = false;
    while (!set.empty() && !found) {
        const std::string_view low = firstCharacter(set);
        set.remove_prefix(low.size());
        if (set.size() > 1 && set.front() == '-') {
            set.remove_prefix(1);
            const std::string_view high = firstCharacter(set);
            set.remove_prefix(high.size());
            found = within(character, low, high);
        } else {
            found = sameCharacter(character, low);
        }
    }
    return found != negated;
}

/// The piece of a pattern that stands for one character: "_", "[...]" or the character itself.
std::string_view firstPiece(std::string_view pattern) {
    const std::size_t closing =
        pattern.starts_with('[') ? pattern.find(']') : std::string_view::npos;
    return closing == std::string_view::npos ? firstCharacter(pattern)
                                             : pattern.substr(0, closing + 1);
}

bool matchesPiece(std::string_view character, std::string_view piece) {
    if (piece == "_") return true;
    if (piece.size() > 2 && piece.front() == '[')
        return inSet(character, piece.substr(1, piece.size() - 2));
    return sameCharacter(character, piece);
}

}  // namespace

bool matchesLike(std::string_view text, std::string_view pattern) {
    // On a mismatch the last % takes one character more; earlier ones never need to.
    std::string_view textAfterStar;
    std::string_view patternAfterStar;
    bool star = false;
    while (!text.empty() || !pattern.empty()) {
        if (pattern.starts_with('%')) {
            pattern.remove_prefix(1);
            star = true;
            textAfterStar = text;
            patternAfterStar = pattern;
            continue;
        }
        if (!text.empty() && !pattern.empty()) {
            const std::string_view character = firstCharacter(text);
            const std::string_view piece = firstPiece(pattern);
            if (matchesPiece(character, piece)) {
                text.remove_prefix(character.size());
                pattern.remove_prefix(piece.size());
                continue;
            }
        }
        if (!star || textAfterStar.empty()) return false;
        textAfterStar.remove_prefix(firstCharacter(textAfterStar).size());
        text = textAfterStar;
        pattern = patternAfterStar;
    }
    return true;
}

}  // namespace stelvan::sql
