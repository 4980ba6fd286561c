// Lays out the inputs of one property frame: a column of labels, the inputs beside them, in rows
// that several short inputs may share. Each label is its input's buddy and names it for assistive
// tools.
#pragma once

#include <QString>
#include <vector>

#include "form/frames.h"

class QGridLayout;
class QGroupBox;
class QHBoxLayout;

namespace stelvan::form {

class FormRows {
public:
    /// `frame` gets a scroll area, so that nothing is ever cut off in a low window; it is always
    /// wide enough for its inputs, so that nobody scrolls sideways.
    FormRows(QGroupBox& frame, MainForm& form);

    /// `label` with its mnemonic. `characters` is the widest the line wants to be; 0 takes the
    /// row's rest.
    void line(gem::Control name, const QString& label, int characters = 0);
    void text(gem::Control name, const QString& label, int lines);
    /// A combo box that can be typed into.
    void combo(gem::Control name, const QString& label);
    void check(gem::Control name, const QString& caption);

    /// The next inputs stand in one row until the matching end; two of them stand in columns of
    /// their own, so that rows of two line up.
    void beginRow();
    void endRow();

    /// A row of inputs of which one is shown at a time; the first is the label's buddy.
    QHBoxLayout* sharedRow(const QString& label, QWidget* buddy);

    /// A text in the column of the inputs, in a row of its own.
    void beside(QWidget* text);

    /// What the frame has below its inputs; takes the height that is left, which stays empty while
    /// the area is hidden, so that the inputs keep their places.
    void below(QWidget* area);
    /// Leaves the height that is left empty.
    void fillUp();

private:
    struct Labelled {
        QWidget* label;
        QWidget* input;
    };
    void add(QWidget* input, gem::Control name, const QString& label);
    void place(const Labelled& first, int span);
    void placeRow();

    MainForm& form_;
    QWidget* page_;
    QGridLayout* grid_;
    std::vector<Labelled> row_;
    bool inRow_ = false;
    int next_ = 0;
};

/// A two-list editor: pool and its filter, four buttons between, selected list. Names in the order
/// pool, selected, pool label, selected label, select, deselect, order up, order down.
struct EditorNames {
    gem::Control pool;
    gem::Control selected;
    const char* poolLabel;
    const char* selectedLabel;
    gem::Control select;
    gem::Control deselect;
    gem::Control orderUp;
    gem::Control orderDown;
    const char* filter;
    QString poolCaption;
    QString selectedCaption;
};
TwoListEditor buildEditor(const EditorNames& names);

}  // namespace stelvan::form
