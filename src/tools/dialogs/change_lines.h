// Changes of a model as lines to be read, as gemdb prints them, and how many there are of each
// kind. Of very many the first lines are kept.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "model/compare/differences.h"
#include "model/core/write.h"

namespace stelvan::tools {

class ChangeLines {
public:
    static constexpr std::size_t kMost = 20'000;

    /// All that differs between two models, whose rows stand in their order.
    ChangeLines(const model::Model& before, const model::Model& after);
    /// What a plan would change.
    explicit ChangeLines(model::WritePlan plan);

    [[nodiscard]] bool empty() const { return counted_.empty(); }
    /// At most kMost, and one that says how many more there are.
    [[nodiscard]] QStringList lines() const;
    /// "3 items added, 2 changed, 1 removed", with "would be" where nothing was done yet.
    [[nodiscard]] QString summary(bool would) const;

private:
    void take(const model::ItemChange& change);

    std::vector<model::ItemChange> counted_;  // without what they say
    QStringList lines_;
    std::size_t left_ = 0;
};

}  // namespace stelvan::tools
