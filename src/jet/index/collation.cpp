#include "jet/index/collation.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "base/text.h"
#include "base/utf.h"
#include "jet/index/collation_table.h"

namespace stelvan::jet {

namespace {

using collation::kRuns;
using collation::kShapes;
using collation::WeightKind;
using collation::WeightRun;
using collation::WeightShape;

constexpr std::uint8_t kSectionEnd = 0x01;
constexpr std::uint8_t kKeyEnd = 0x00;
constexpr std::uint8_t kPlainSecondary = 0x02;
constexpr std::array<std::uint8_t, 5> kKanaTail = {0xFF, 0x02, 0x80, 0xFF, 0x80};

// For each block of 256 code units the first run that can hold one of it, so that few are left to
// search.
constexpr auto kBlockStarts = [] {
    std::array<std::uint16_t, 257> starts{};
    std::size_t run = 0;
    for (std::size_t block = 0; block < starts.size(); ++block) {
        while (run < std::size(kRuns) && kRuns[run].first + kRuns[run].count <= block * 256u) ++run;
        starts[block] = static_cast<std::uint16_t>(run);
    }
    return starts;
}();

constexpr std::size_t kNoRun = std::size(kRuns);

// The place of the run that holds the unit. (Places instead of pointers: the sanitizers do not let
// pointers be compared at compile time.)
constexpr std::size_t findRun(char16_t unit) {
    const std::size_t block = unit >> 8;
    std::size_t low = kBlockStarts[block];
    std::size_t high = std::min<std::size_t>(kBlockStarts[block + 1] + 1u, std::size(kRuns));
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (kRuns[middle].first <= unit) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    if (low == 0) return kNoRun;
    const WeightRun& run = kRuns[low - 1];
    return unit < run.first + run.count ? low - 1 : kNoRun;
}

constexpr std::uint32_t primaryWeight(const WeightRun& run, char16_t unit) {
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(run.primary) +
                                      static_cast<std::int64_t>(run.step) * (unit - run.first));
}

// ASCII characters that are one letter of the order without any secondary weight: their primary
// bytes as a number that compares as the bytes do (a single byte stands high). 0 for all others.
constexpr auto kPlain = [] {
    std::array<std::uint16_t, 256> plain{};
    for (char16_t c = 1; c < 0x80; ++c) {
        const std::size_t place = findRun(c);
        if (place == kNoRun) continue;
        const WeightRun& run = kRuns[place];
        const WeightShape& shape = kShapes[run.shape];
        if (shape.kind != WeightKind::Letter || shape.elements != 1 || shape.secondarySize != 0)
            continue;
        const std::uint32_t weight = primaryWeight(run, c);
        plain[c] = static_cast<std::uint16_t>(shape.primarySize == 1 ? weight << 8 : weight);
    }
    return plain;
}();

std::uint16_t plainWeight(char c) {
    return kPlain[static_cast<unsigned char>(c)];
}

void appendBig(std::vector<std::uint8_t>& bytes, std::uint32_t number, std::size_t size) {
    for (std::size_t i = size; i-- > 0;)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

// Collects the sections of one key while walking over a text's units.
class KeyBuilder {
public:
    KeyBuilder(std::vector<std::uint8_t>& key, ExpansionCount count) : key_(key), count_(count) {}

    void add(char16_t unit) {
        if (base::isSurrogate(unit)) {
            addSurrogate(unit);
            return;
        }
        const std::size_t place = findRun(unit);
        if (place == kNoRun) return;
        const WeightRun& run = kRuns[place];
        const WeightShape& shape = kShapes[run.shape];
        switch (shape.kind) {
            case WeightKind::Letter:
                addLetter(primaryWeight(run, unit), shape, run.extra);
                return;
            case WeightKind::Modifier:
                addModifier(static_cast<std::uint8_t>(run.extra));
                return;
            case WeightKind::Unprintable:
                addUnprintable(static_cast<std::uint8_t>(run.extra));
                return;
        }
    }

    void finish() {
        while (!secondary_.empty() && secondary_.back() <= kPlainSecondary) secondary_.pop_back();
        key_.push_back(kSectionEnd);
        key_.insert(key_.end(), secondary_.begin(), secondary_.end());
        if (!kana_.empty() || !unprintable_.empty()) finishLateSections();
        key_.push_back(kKeyEnd);
    }

private:
    void addLetter(std::uint32_t primary, const WeightShape& shape, std::uint16_t secondary) {
        appendBig(key_, primary, shape.primarySize);
        if (shape.secondarySize > 0) {
            fillSecondary();
            appendBig(secondary_, secondary, shape.secondarySize);
        }
        if (shape.kana != 0) kana_.push_back(shape.kana);
        const bool once = count_ == ExpansionCount::Once && shape.secondarySize == 0;
        elements_ += once ? 1 : shape.elements;
    }

    void addModifier(std::uint8_t amount) {
        fillSecondary();
        if (!secondary_.empty()) {
            secondary_.back() = static_cast<std::uint8_t>(secondary_.back() + amount);
        } else {
            secondary_.push_back(amount);
            leading_ = 1;
        }
    }

    void addUnprintable(std::uint8_t code) {
        appendBig(unprintable_, static_cast<std::uint32_t>(0x8000 | (7 + 4 * elements_)) & 0xFFFF,
                  2);
        unprintable_.push_back(0x06);
        unprintable_.push_back(code);
    }

    // Halves of a pair have no weights in the table: they follow from their numbers.
    void addSurrogate(char16_t unit) {
        constexpr WeightShape kHalf = {WeightKind::Letter, 2, 1, 1, 0};
        constexpr std::uint16_t kSecondary = 0x3F;
        if (base::isHighSurrogate(unit)) {
            addLetter(unit - 10238u, kHalf, kSecondary);
            return;
        }
        const std::uint32_t offset = unit - 0xDC00u;
        const std::uint32_t below = offset < 8     ? 9992
                                    : offset < 262 ? 9990
                                    : offset < 516 ? 9988
                                    : offset < 770 ? 9986
                                                   : 9984;
        addLetter(unit - below, kHalf, kSecondary);
    }

    void fillSecondary() {
        if (secondary_.size() < elements_ + leading_)
            secondary_.resize(elements_ + leading_, kPlainSecondary);
    }

    void finishLateSections() {
        key_.push_back(kSectionEnd);
        key_.push_back(kSectionEnd);
        if (!kana_.empty()) finishKana();
        if (unprintable_.empty()) return;
        key_.push_back(kSectionEnd);
        key_.insert(key_.end(), unprintable_.begin(), unprintable_.end());
    }

    // Two bits for each kana, three pairs to a byte; those of the second kind need not be said at
    // the end.
    void finishKana() {
        while (!kana_.empty() && kana_.back() == 2) kana_.pop_back();
        for (std::size_t i = 0; i < kana_.size(); i += 3) {
            unsigned packed = 0x80;
            for (std::size_t j = i; j < std::min(i + 3, kana_.size()); ++j) {
                packed |= (kana_[j] == 1 ? 2u : 3u) << (4 - 2 * (j - i));
            }
            key_.push_back(static_cast<std::uint8_t>(packed));
        }
        key_.insert(key_.end(), kKanaTail.begin(), kKanaTail.end());
        if (!unprintable_.empty()) key_.push_back(0xFF);
    }

    std::vector<std::uint8_t>& key_;
    ExpansionCount count_;
    std::vector<std::uint8_t> secondary_;
    std::vector<std::uint8_t> unprintable_;
    std::vector<std::uint8_t> kana_;
    std::size_t elements_ = 0;
    std::size_t leading_ = 0;  // 1 where a modifier stood before the first letter
};

// Appends the key where the text consists of plain characters only; false (and nothing appended)
// otherwise.
bool appendPlainKey(std::vector<std::uint8_t>& key, std::string_view text) {
    const std::size_t start = key.size();
    for (const char c : base::withoutTrailingBlanks(text.substr(0, kMaxKeyUnits))) {
        const std::uint16_t weight = plainWeight(c);
        if (weight == 0) {
            key.resize(start);
            return false;
        }
        key.push_back(static_cast<std::uint8_t>(weight >> 8));
        if ((weight & 0xFF) != 0) key.push_back(static_cast<std::uint8_t>(weight));
    }
    key.push_back(kSectionEnd);
    key.push_back(kKeyEnd);
    return true;
}

void appendAnyKey(std::vector<std::uint8_t>& key, std::string_view text, std::size_t maxUnits,
                  ExpansionCount count) {
    const std::u16string units = base::toUtf16(text);
    const auto counted =
        base::withoutTrailingBlanks(std::u16string_view(units).substr(0, maxUnits));
    KeyBuilder builder(key, count);
    for (const char16_t unit : counted) builder.add(unit);
    builder.finish();
}

int compareByKeys(std::string_view left, std::string_view right) {
    std::vector<std::uint8_t> leftKey;
    std::vector<std::uint8_t> rightKey;
    appendAnyKey(leftKey, left, std::string_view::npos, ExpansionCount::Letters);
    appendAnyKey(rightKey, right, std::string_view::npos, ExpansionCount::Letters);
    const auto order = std::lexicographical_compare_three_way(leftKey.begin(), leftKey.end(),
                                                              rightKey.begin(), rightKey.end());
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace

void appendTextKey(std::vector<std::uint8_t>& key, std::string_view text, bool ascending,
                   ExpansionCount count) {
    const std::size_t start = key.size();
    if (!appendPlainKey(key, text)) appendAnyKey(key, text, kMaxKeyUnits, count);
    if (ascending) return;
    for (std::size_t i = start; i < key.size(); ++i) key[i] = static_cast<std::uint8_t>(~key[i]);
    key.push_back(kKeyEnd);
}

bool hasPlainKey(std::string_view text) {
    const std::string_view counted = base::withoutTrailingBlanks(text);
    return counted.size() <= kMaxKeyUnits &&
           std::ranges::all_of(counted, [](char c) { return plainWeight(c) != 0; });
}

// What both texts share at their beginning weighs the same in both, so the first two characters
// with different letters decide, unless one of them is more than a plain letter.
int compareText(std::string_view left, std::string_view right) {
    const std::string_view a = base::withoutTrailingBlanks(left);
    const std::string_view b = base::withoutTrailingBlanks(right);
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        if (a[i] == b[i]) continue;
        const std::uint16_t weightA = plainWeight(a[i]);
        const std::uint16_t weightB = plainWeight(b[i]);
        if (weightA == 0 || weightB == 0) return compareByKeys(a, b);
        if (weightA != weightB) return weightA < weightB ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    const std::string_view longer = a.size() > b.size() ? a : b;
    if (plainWeight(longer[shared]) == 0) return compareByKeys(a, b);
    return a.size() > b.size() ? 1 : -1;
}

}  // namespace stelvan::jet
