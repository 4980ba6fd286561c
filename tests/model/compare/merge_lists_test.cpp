#include "model/compare/merge_lists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace stelvan::test {
namespace {

using model::Key;
using model::MergedList;
using model::Side;

/// One key for each letter.
std::vector<Key> list(const std::string& letters) {
    std::vector<Key> keys;
    for (const char letter : letters) keys.push_back({Key::Kind::Number, letter, {}});
    return keys;
}

MergedList mergeOf(const std::string& base, const std::string& ours, const std::string& theirs,
                   Side decides = Side::Ours) {
    return model::mergeLists(list(base), list(ours), list(theirs), decides);
}

std::string letters(const MergedList& merged, const std::string& ours, const std::string& theirs) {
    std::string all;
    for (const auto& entry : merged.entries)
        all += entry.ours ? ours[*entry.ours] : theirs[*entry.theirs];
    return all;
}

/// The merged list, with "!" behind it where its order is a conflict.
std::string merged(const std::string& base, const std::string& ours, const std::string& theirs,
                   Side decides = Side::Ours) {
    const MergedList result = mergeOf(base, ours, theirs, decides);
    return letters(result, ours, theirs) + (result.orderConflict ? "!" : "");
}

TEST(MergedLists, TakeWhatEitherSideAddedAndRemoved) {
    EXPECT_EQ(merged("abc", "abc", "abc"), "abc");
    EXPECT_EQ(merged("abc", "axbc", "abc"), "axbc");
    EXPECT_EQ(merged("abc", "axbc", "abyc"), "axbyc");
    EXPECT_EQ(merged("abc", "bc", "ab"), "b");
    EXPECT_EQ(merged("abc", "", "abc"), "");
    EXPECT_EQ(merged("", "ab", "cd"), "abcd");
}

TEST(MergedLists, WhatBothAddedIsThereOnce) {
    EXPECT_EQ(merged("ab", "abx", "abx"), "abx");
    EXPECT_EQ(merged("ab", "abxy", "abzx"), "abzxy");
    EXPECT_EQ(merged("ab", "aabxx", "abx"), "aabxx");
}

TEST(MergedLists, AdditionsAtOnePlaceStandByTheirKeysEachSidesTogether) {
    EXPECT_EQ(merged("ab", "abxz", "aby"), "abxzy");
    EXPECT_EQ(merged("ab", "aby", "abxz"), "abxzy");
}

TEST(MergedLists, AnAdditionFollowsWhatItFollowed) {
    EXPECT_EQ(merged("abc", "abxc", "acb"), "acbx");
    EXPECT_EQ(merged("abc", "abxc", "ac"), "axc");
}

TEST(MergedLists, MovesOfBothSidesAreDone) {
    EXPECT_EQ(merged("abcd", "dabc", "abcd"), "dabc");
    EXPECT_EQ(merged("abcd", "dabc", "bcda"), "dbca");
    EXPECT_EQ(merged("abcd", "bacd", "abdc"), "badc");
    EXPECT_EQ(merged("abcd", "dabc", "dabc"), "dabc");
}

TEST(MergedLists, AnOrderThatBothCannotHaveIsAConflict) {
    EXPECT_EQ(merged("ab", "xab", "abx"), "xab!");
    EXPECT_EQ(merged("ab", "xab", "abx", Side::Theirs), "abx!");
    EXPECT_EQ(merged("a", "axy", "ayx"), "axy!");
    EXPECT_EQ(merged("a", "axy", "ayx", Side::Theirs), "ayx!");
}

std::string randomList(std::mt19937& random, const std::string& from) {
    std::string all;
    for (const char letter : from)
        if (random() % 5 != 0) all += letter;
    for (std::size_t left = random() % 3; left > 0; --left)
        all.insert(random() % (all.size() + 1), 1, static_cast<char>('p' + random() % 4));
    if (all.size() > 1 && random() % 3 == 0) std::swap(all[0], all[random() % all.size()]);
    return all;
}

TEST(MergedLists, SwappingTheSidesChangesNothing) {
    std::mt19937 random(7);  // NOLINT: the same lists each time
    int conflicts = 0;
    for (int round = 0; round < 5000; ++round) {
        const std::string base = randomList(random, "abcdef");
        const std::string ours = randomList(random, base);
        const std::string theirs = randomList(random, base);
        SCOPED_TRACE(base + " " + ours + " " + theirs);
        const MergedList result = mergeOf(base, ours, theirs);
        const MergedList swapped = mergeOf(base, theirs, ours, Side::Theirs);
        EXPECT_EQ(letters(result, ours, theirs), letters(swapped, theirs, ours));
        EXPECT_EQ(result.orderConflict, swapped.orderConflict);
        conflicts += result.orderConflict ? 1 : 0;
    }
    EXPECT_GT(conflicts, 0);
    EXPECT_LT(conflicts, 2500);
}

TEST(MergedLists, NothingComesTwiceAndNothingIsLost) {
    std::mt19937 random(8);  // NOLINT: the same lists each time
    for (int round = 0; round < 5000; ++round) {
        const std::string base = randomList(random, "abcdefg");
        const std::string ours = randomList(random, base);
        const std::string theirs = randomList(random, base);
        SCOPED_TRACE(base + " " + ours + " " + theirs);
        const MergedList result = mergeOf(base, ours, theirs);
        const auto isIn = [&](auto side, std::size_t at) {
            const auto has = [&](const auto& entry) { return entry.*side == at; };
            return std::ranges::count_if(result.entries, has) +
                   std::ranges::count_if(result.removed, has);
        };
        for (std::size_t at = 0; at < ours.size(); ++at)
            EXPECT_EQ(isIn(&MergedList::Entry::ours, at), 1);
        for (std::size_t at = 0; at < theirs.size(); ++at)
            EXPECT_EQ(isIn(&MergedList::Entry::theirs, at), 1);
        for (const auto& entry : result.removed) EXPECT_FALSE(entry.ours && entry.theirs);
        for (const auto& entry : result.entries)
            EXPECT_TRUE(!entry.base || (entry.ours && entry.theirs));
    }
}

TEST(MergedLists, OneSidesListIsTheResultWhereTheOtherDidNothing) {
    std::mt19937 random(9);  // NOLINT: the same lists each time
    for (int round = 0; round < 2000; ++round) {
        const std::string base = randomList(random, "abcdefg");
        const std::string side = randomList(random, base);
        EXPECT_EQ(merged(base, side, base), side) << base;
        EXPECT_EQ(merged(base, base, side), side) << base;
        EXPECT_EQ(merged(base, side, side), side) << base;
    }
}

}  // namespace
}  // namespace stelvan::test
