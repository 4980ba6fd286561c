// The child items of a list variable: the pool of candidates, the list's own children in their
// order, and the rule that only an only child may be duplicated.
//
// While a record is edited, rows survive a change of format away from "L" and back. A fill that
// fails is reported, and the rest of the window goes on.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "form/window.h"
#include "links/link_rows.h"

namespace stelvan::links {

class ListChildren {
public:
    /// `window` must outlive the object.
    explicit ListChildren(form::Window& window) : window_(window) {}

    /// Shows or hides the pool and its buttons; a shown pool is filled with what may become a
    /// child.
    void lDispChildEditor(bool show);

    /// Shows or hides the child list; a shown list is filled with the children of the variable in
    /// txtVarID, while editing only the first time.
    void lUpdateVarChild(bool show);

    /// Refuses the check mark of a row that is not the only one; to be connected to
    /// ListView::itemChecked.
    void lvwChildItems_ItemCheck(int row);

    /// Stores a child's duplicate flag.
    void lVarUpdDuplicate(std::int32_t childId, bool allowed);
    /// Stores a child's list and its place in it; 0 and 0 release it.
    void lLinkListAndChild(std::int32_t parentId, std::int32_t childId, std::int16_t position);

    /// An edit begins: the pool of another record is dropped, and the list is read anew where one
    /// is shown. What the file holds now is what a save may replace.
    void beginEditing();
    /// The edit is over: from here on the list is filled from the file again.
    void endEditing();

    /// Empties lvwChildItems, as for a variable that is new or gone.
    void clear();
    /// While editing: whether the list holds what may be saved. False after a fill that failed.
    [[nodiscard]] bool filled() const { return heldInEdit_; }

    /// Releases every child that the file links to the variable. Throws RunTimeError, that of a
    /// changed record where another program changed them since the edit began. Runs inside the
    /// caller's unit of work, as saveLinks does.
    void releaseChildren(const std::string& listId);
    /// Releases the present children, then links the rows of lvwChildItems, 1 to n, with their
    /// flags.
    void saveLinks(const std::string& listId);

private:
    void fillPool();
    void fillList();
    [[nodiscard]] std::string listId() const;
    /// The children of a list in the file, with their places and marks.
    [[nodiscard]] LinkRows childRowsOf(const std::string& list) const;
    /// Throws where another program has put the child into a list meanwhile, or deleted it.
    void requireFree(std::int32_t childId) const;
    /// Statements about one child, over a connection of its own.
    void execute(std::int32_t childId, std::span<const std::string> statements) const;

    form::Window& window_;
    std::optional<QString> filledFor_;  // the id whose children the shown list holds
    std::optional<LinkRows> shown_;     // of the list being edited; none of a new one
    QStringList own_;                   // the ids that the shown list was filled with
    bool editing_ = false;
    bool heldInEdit_ = false;
};

}  // namespace stelvan::links
