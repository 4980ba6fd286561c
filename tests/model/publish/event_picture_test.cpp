#include "model/publish/event_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/model/publish/own_model.h"

namespace stelvan::test {
namespace {

using model::EventPicture;
using model::PictureBox;
using Kind = PictureBox::Kind;

EventPicture pictureOfFirst(const OwnModel& own) {
    const model::CrossReference references(own.whole);
    return model::pictureOf(references.events().all().front().item, references);
}

std::vector<const PictureBox*> boxes(const EventPicture& picture, Kind kind) {
    std::vector<const PictureBox*> some;
    for (const PictureBox& box : picture.boxes)
        if (box.kind == kind) some.push_back(&box);
    return some;
}

bool overlap(const PictureBox& a, const PictureBox& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height &&
           b.y < a.y + a.height;
}

OwnModel twoReports() {
    OwnModel own;
    own.event(1, "Started").report(10, "Lot").report(11, "Times");
    own.variable(101, "Id").variable(102, "Begin").variable(103, "End");
    own.sends(1, 10, 1).sends(1, 11, 2);
    own.carries(10, 101, 1).carries(11, 102, 1).carries(11, 103, 2);
    return own;
}

TEST(EventPicture, LeadsFromTheEventOverReportsToVariables) {
    const EventPicture picture = pictureOfFirst(twoReports());
    EXPECT_EQ(picture.reports, 2U);
    EXPECT_EQ(picture.variables, 3U);
    std::vector<std::string> names;
    for (const PictureBox& box : picture.boxes) names.push_back(box.id + " " + box.name);
    EXPECT_EQ(names, (std::vector<std::string>{"1 Started", "10 Lot", "101 Id", "11 Times",
                                               "102 Begin", "103 End"}));
    EXPECT_EQ(picture.lines.size(), 5U);
}

TEST(EventPicture, NothingOverlapsAndNothingLiesOutside) {
    const EventPicture picture = pictureOfFirst(twoReports());
    for (const PictureBox& box : picture.boxes) {
        EXPECT_GE(box.x, 0);
        EXPECT_GE(box.y, 0);
        EXPECT_LE(box.x + box.width, picture.width);
        EXPECT_LE(box.y + box.height, picture.height);
        for (const PictureBox& other : picture.boxes)
            EXPECT_TRUE(&box == &other || !overlap(box, other)) << box.name << other.name;
    }
}

TEST(EventPicture, LinesRunFromRightSidesToLeftSides) {
    const EventPicture picture = pictureOfFirst(twoReports());
    for (const model::PictureLine& line : picture.lines) {
        const auto leaves = [&](const PictureBox& box) {
            return box.x + box.width == line.fromX && box.y + box.height / 2 == line.fromY;
        };
        const auto arrives = [&](const PictureBox& box) {
            return box.x == line.toX && box.y + box.height / 2 == line.toY;
        };
        EXPECT_TRUE(std::ranges::any_of(picture.boxes, leaves));
        EXPECT_TRUE(std::ranges::any_of(picture.boxes, arrives));
        EXPECT_LT(line.fromX, line.toX);
    }
}

TEST(EventPicture, ALinkToNowhereIsShownAsThat) {
    OwnModel own;
    own.event(1, "Started").report(10, "Lot").sends(1, 10, 1).sends(1, 77, 2).carries(10, 88, 1);
    const EventPicture picture = pictureOfFirst(own);
    const auto reports = boxes(picture, Kind::Report);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[1]->id, "77");
    EXPECT_FALSE(reports[1]->item);
    EXPECT_EQ(boxes(picture, Kind::Variable).front()->name, "not in the model");
}

TEST(EventPicture, OfAReportWithManyVariablesItSaysHowManyMoreThereAre) {
    OwnModel own;
    own.event(1, "Started").report(10, "Lot").sends(1, 10, 1);
    for (int i = 0; i < 40; ++i) own.variable(101 + i, "V").carries(10, 101 + i, i);
    const EventPicture picture = pictureOfFirst(own);
    const auto shown = boxes(picture, Kind::Variable).size();
    const auto more = boxes(picture, Kind::More);
    ASSERT_EQ(more.size(), 1U);
    EXPECT_EQ(more[0]->name, "and " + std::to_string(40 - shown) + " more");
    EXPECT_EQ(more[0]->item->name(), "Lot");
    EXPECT_EQ(picture.variables, 40U);
}

TEST(EventPicture, ALongNameLosesItsMiddle) {
    OwnModel own;
    own.event(1, std::string(60, 'a') + "LeftEnd");
    const EventPicture picture = pictureOfFirst(own);
    const PictureBox& box = picture.boxes.front();
    EXPECT_TRUE(box.shortened);
    EXPECT_TRUE(box.name.ends_with("LeftEnd"));
    EXPECT_NE(box.name.find("\u2026"), std::string::npos);
    EXPECT_LT(box.width, model::estimatedWidth(std::string(60, 'a')));
}

TEST(EventPicture, BroadCharactersAreNotCutInTwo) {
    OwnModel own;
    std::string name;
    for (int i = 0; i < 30; ++i) name += "\u5831";
    own.event(1, name);
    const EventPicture picture = pictureOfFirst(own);
    std::string rest = picture.boxes.front().name;
    const std::size_t dots = rest.find("\u2026");
    ASSERT_NE(dots, std::string::npos);
    rest.erase(dots, 3);
    EXPECT_EQ(rest.size() % 3, 0U);
    EXPECT_EQ(rest, name.substr(0, rest.size()));
}

}  // namespace
}  // namespace stelvan::test
