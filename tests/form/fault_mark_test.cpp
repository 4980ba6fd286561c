// An input at fault shows it: frame, picture, tool tip, description.
#include "form/fault_mark.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QTest>

#include "form/field.h"
#include "form/inputs.h"
#include "form/list_view.h"

namespace stelvan::form {
namespace {

struct Marked {
    LineBox line;
    TextBox text{3};
    ComboBox combo;
    QList<Field*> fields;

    Marked() {
        combo.setEditable(true);
        for (QWidget* box : std::initializer_list<QWidget*>{&line, &text, &combo}) {
            fields << new Field(box);
            box->resize(200, 60);
            box->show();
        }
    }
};

const QString kEmpty = "Cannot be empty string.";

bool hasColour(const QImage& picture, const QRect& part, const QColor& colour) {
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            if (picture.pixelColor(x, y) == colour) return true;
    return false;
}

TEST(FaultMark, AnOpenFieldSaysWhatIsWrongAndAgainNothingOnceItIsRight) {
    Marked inputs;
    for (Field* field : inputs.fields) {
        QWidget& widget = *field->widget();
        widget.setToolTip("what it is");
        field->setDescription("A name.");
        field->setMarker("1");
        EXPECT_EQ(field->faultShown(), kEmpty);
        EXPECT_EQ(widget.toolTip(), kEmpty);
        EXPECT_EQ(widget.accessibleDescription(), kEmpty + " A name.");
        field->setMarker("6");
        EXPECT_EQ(widget.toolTip(), "Name already exists. Please use other name.");
        field->setMarker("0");
        EXPECT_EQ(field->faultShown(), "");
        EXPECT_EQ(widget.toolTip(), "what it is");
        EXPECT_EQ(widget.accessibleDescription(), "A name.");
    }
}

TEST(FaultMark, AClosedFieldShowsNoneAndKeepsItsMarker) {
    Marked inputs;
    for (Field* field : inputs.fields) {
        field->setMarker("1");
        field->setLocked(true);
        EXPECT_EQ(field->faultShown(), "");
        EXPECT_EQ(field->marker(), "1");
        field->setLocked(false);
        EXPECT_EQ(field->faultShown(), kEmpty);
        field->setEnabled(false);
        EXPECT_EQ(field->faultShown(), "");
    }
}

TEST(FaultMark, AMarkerThatIsNoCodeIsTheMessage) {
    LineBox box;
    Field field(&box);
    field.setMarker("Database file does not exist.");
    EXPECT_EQ(field.faultShown(), "Database file does not exist.");
    field.setMarker("99");
    EXPECT_EQ(field.faultShown(), "99");
}

TEST(FaultMark, FrameAndPictureAreDrawnInItsColour) {
    Marked inputs;
    const QColor colour = faultColour(QGuiApplication::palette());
    for (Field* field : inputs.fields) {
        QWidget& widget = *field->widget();
        const QRect right(widget.width() - 26, 4, 22, widget.height() - 8);
        const QRect lowest(10, widget.height() - 3, 100, 3);
        EXPECT_FALSE(hasColour(widget.grab().toImage(), lowest, colour));
        field->setMarker("1");
        QCoreApplication::processEvents();
        const QImage marked = widget.grab().toImage();
        const char* const kind = widget.metaObject()->className();
        EXPECT_TRUE(hasColour(marked, lowest, colour)) << kind;
        EXPECT_TRUE(field->kind() == Field::Kind::Combo || hasColour(marked, right, colour))
            << kind;
    }
}

TEST(FaultMark, TheMarkCoversItsInputAtEverySizeAndLetsTheMouseThrough) {
    LineBox box;
    Field field(&box);
    field.setMarker("1");
    box.resize(300, 40);
    box.show();
    const auto* mark = box.findChild<FaultMark*>();
    EXPECT_EQ(mark->geometry(), box.rect());
    EXPECT_TRUE(mark->testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_TRUE(mark->isVisible());
}

TEST(FaultMark, AListIsMarkedWhileItIsOpen) {
    ListView list;
    list.setFault("Must contain item.");
    EXPECT_EQ(list.toolTip(), "Must contain item.");
    EXPECT_EQ(list.accessibleDescription(), "Must contain item.");
    list.setOpen(false);
    EXPECT_EQ(list.toolTip(), "");
    list.setFault("Must contain item.");
    EXPECT_EQ(list.toolTip(), "");
}

}  // namespace
}  // namespace stelvan::form
