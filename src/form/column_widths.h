// Column widths by what the columns hold: numbers and flags take what they need, texts share the
// rest, and no header is cut while there is room.
#pragma once

class QTableView;

namespace stelvan::form {

/// Sets the widths of the columns that are seen, by their headers and by the rows at the top; a
/// text column is at least as wide as its texts, up to about forty letters. For a grid that has its
/// place on the screen.
void fitColumns(QTableView& grid);

}  // namespace stelvan::form
