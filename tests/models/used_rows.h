// Rows as years of use leave them in their table.
#pragma once

#include "data/builder/build_model.h"

namespace stelvan::data::test {

/// Puts in the rows in their order, and a few that are deleted again; every ninth is entered in
/// outline and completed when all are there, so that it moves to another page and leaves a pointer.
void insertAsUsed(jet::Table& table, const TableRows& rows);

}  // namespace stelvan::data::test
