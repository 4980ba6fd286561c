#include <algorithm>

#include "base/text.h"
#include "db/connection.h"

namespace stelvan::db {

namespace {

constexpr std::string_view kSourceKey = "data source=";

std::size_t findFrom(std::string_view text, std::string_view key, std::size_t from) {
    const std::string_view rest = text.substr(std::min(from, text.size()));
    const auto found =
        std::search(rest.begin(), rest.end(), key.begin(), key.end(),
                    [](char a, char b) { return base::upperCase(a) == base::upperCase(b); });
    return found == rest.end() ? std::string_view::npos
                               : static_cast<std::size_t>(found - text.begin());
}

bool containsWord(std::string_view text, std::string_view word) {
    return findFrom(text, word, 0) != std::string_view::npos;
}

/// Where the path ends: at the last "; Mode=" (a path may hold semicolons, even that very text),
/// else with the text.
std::size_t pathEnd(std::string_view text, std::size_t pathStart) {
    constexpr std::string_view kModeKey = "mode=";
    std::size_t end = text.size();
    for (std::size_t at = findFrom(text, kModeKey, pathStart); at != std::string_view::npos;
         at = findFrom(text, kModeKey, at + 1)) {
        const std::string_view before =
            base::withoutTrailingBlanks(text.substr(pathStart, at - pathStart));
        if (before.ends_with(';')) end = pathStart + before.size() - 1;
    }
    return end;
}

void applyMode(ConnectionText& result, std::string_view mode) {
    const bool both = containsWord(mode, "readwrite") || containsWord(mode, "share");
    result.readable = both || containsWord(mode, "read");
    result.writable = both || containsWord(mode, "write");
}

/// Takes "key=value; key=value" pairs; keys that mean nothing here are passed over.
void applyPairs(ConnectionText& result, std::string_view pairs) {
    while (!pairs.empty()) {
        const std::size_t end = std::min(pairs.find(';'), pairs.size());
        const std::string_view pair = pairs.substr(0, end);
        pairs.remove_prefix(std::min(end + 1, pairs.size()));
        const std::size_t equals = pair.find('=');
        if (equals == std::string_view::npos) continue;
        const std::string_view key = base::trimBlanks(pair.substr(0, equals));
        const std::string_view value = base::trimBlanks(pair.substr(equals + 1));
        if (base::sameWord(key, "provider")) result.provider = value;
        if (base::sameWord(key, "mode")) applyMode(result, value);
    }
}

}  // namespace

ConnectionText ConnectionText::parse(std::string_view text) {
    ConnectionText result;
    const std::size_t key = findFrom(text, kSourceKey, 0);
    if (key == std::string_view::npos) {
        applyPairs(result, text);
        return result;
    }
    const std::size_t start = key + kSourceKey.size();
    const std::size_t end = pathEnd(text, start);
    result.dataSource = text.substr(start, end - start);
    applyPairs(result, text.substr(0, key));
    applyPairs(result, text.substr(end));
    return result;
}

}  // namespace stelvan::db
