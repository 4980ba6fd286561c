// What identifiers and names a model has: what the judge of a record asks about the others.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "gem/judge.h"
#include "model/core/model.h"

namespace stelvan::model {

/// Of one kind, over all tables in which the editor looks for them. The record that is judged is
/// in the model already, so what counts is whether a second one has the same.
class KnownItems final : public gem::Others {
public:
    KnownItems(const Model& model, gem::Kind kind);

    bool idExists(gem::Kind kind, const std::string& id) override;
    bool nameExists(gem::Kind kind, const std::string& name) override;

private:
    std::map<std::int64_t, int> ids_;
    std::map<std::vector<std::uint8_t>, std::vector<std::string>> names_;
};

}  // namespace stelvan::model
