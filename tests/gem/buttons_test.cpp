// Which buttons are open, as a table.
#include "gem/buttons.h"

#include <gtest/gtest.h>

#include "gem/categories.h"

namespace stelvan::gem {
namespace {

constexpr std::int16_t kUnknown = 13;

/// A letter for each that is open: s save and cancel, a add, e edit, d delete, p previous, n next,
/// b browse.
std::string openIn(const Situation& now) {
    const Buttons open = buttonsIn(now);
    std::string letters;
    const std::pair<bool, char> all[] = {{open.inEdit, 's'}, {open.add, 'a'},      {open.edit, 'e'},
                                         {open.remove, 'd'}, {open.previous, 'p'}, {open.next, 'n'},
                                         {open.browse, 'b'}};
    for (const auto& [isOpen, letter] : all)
        if (isOpen) letters += letter;
    return letters;
}

Situation browsing(std::int16_t category, std::int32_t count, std::int32_t position) {
    return {.category = category, .loaded = true, .count = count, .position = position};
}

TEST(Buttons, whileEditingOnlySaveAndCancelAreOpen) {
    for (std::int16_t category = GEMEVT; category <= CSTRPT; ++category)
        EXPECT_EQ(
            openIn(
                {.category = category, .editing = true, .loaded = true, .count = 3, .position = 2}),
            "s")
            << category;
    for (const std::int16_t category : {NO_CATEGORY, LIMIT})
        EXPECT_EQ(openIn({.category = category, .editing = true}), "") << category;
    EXPECT_EQ(openIn({.category = kUnknown, .editing = true}), "");
}

TEST(Buttons, recordsOfTheStandardCanOnlyBeEdited) {
    for (const std::int16_t category : {GEMEVT, GEMVDV, GEMSDV, GEMVEC, GEMSTT}) {
        EXPECT_EQ(openIn(browsing(category, 1, 1)), "eb") << category;
        EXPECT_EQ(openIn(browsing(category, 0, 0)), "b") << category;
    }
}

TEST(Buttons, aListOfTheStandardCannotBeEditedInWhateverCase) {
    for (const std::int16_t category : {GEMVDV, GEMSDV, GEMVEC})
        for (const char* format : {"L", "l", " L "}) {
            Situation now = browsing(category, 2, 1);
            now.format = format;
            EXPECT_EQ(openIn(now), "nb") << category << format;
        }
    Situation event = browsing(GEMEVT, 2, 1);
    event.format = "L";  // a leftover of another frame
    EXPECT_EQ(openIn(event), "enb");
}

TEST(Buttons, theEquipmentsOwnRecordsCanBeAddedEditedAndDeleted) {
    for (const std::int16_t category : {CSTALM, CSTEVT, CSTVDV, CSTVSV, CSTVEC}) {
        EXPECT_EQ(openIn(browsing(category, 1, 1)), "aedb") << category;
        EXPECT_EQ(openIn(browsing(category, 0, 0)), "ab") << category;
        EXPECT_EQ(openIn({.category = category}), "ab") << category;
    }
    Situation list = browsing(CSTVSV, 1, 1);
    list.format = "L";
    EXPECT_EQ(openIn(list), "aedb");
}

TEST(Buttons, reportsUpTo100AreReserved) {
    const auto report = [](const char* id) {
        Situation now = browsing(CSTRPT, 1, 1);
        now.reportId = id;
        return openIn(now);
    };
    for (const char* id : {"0", "1", "100", " 100 ", "99.5"}) EXPECT_EQ(report(id), "ab") << id;
    for (const char* id : {"101", "-1", "", "abc", "100.5", "99999999999"})
        EXPECT_EQ(report(id), "aedb") << id;
    EXPECT_EQ(openIn(browsing(CSTRPT, 0, 0)), "aedb") << "an empty report frame stays open";
}

TEST(Buttons, moveButtonsFollowThePosition) {
    EXPECT_EQ(openIn(browsing(CSTALM, 3, 1)), "aednb");
    EXPECT_EQ(openIn(browsing(CSTALM, 3, 2)), "aedpnb");
    EXPECT_EQ(openIn(browsing(CSTALM, 3, 3)), "aedpb");
    EXPECT_EQ(openIn({.category = CSTALM, .loaded = false, .count = 0, .position = 2}), "ab");
}

TEST(Buttons, withoutACategoryOnlyBrowsingIsOpen) {
    for (const std::int16_t category : {std::int16_t{NO_CATEGORY}, std::int16_t{LIMIT}, kUnknown})
        EXPECT_EQ(openIn({.category = category}), "b") << category;
}

}  // namespace
}  // namespace stelvan::gem
