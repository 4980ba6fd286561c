// The record on screen as the rules see it: its texts, rights and markers read into a gem::Record,
// and the faults that a rule found put back as markers.
#pragma once

#include <functional>
#include <string>

#include "form/window.h"
#include "gem/judge.h"

namespace stelvan::checks {

/// What the GEM database says about other records.
class StoredOthers final : public gem::Others {
public:
    explicit StoredOthers(const db::Operations& database) : database_(database) {}
    [[nodiscard]] bool idExists(gem::Kind kind, const std::string& id) override;
    [[nodiscard]] bool nameExists(gem::Kind kind, const std::string& name) override;

private:
    const db::Operations& database_;
};

class RecordFields {
public:
    explicit RecordFields(form::Window& window) : window_(window) {}

    using Rule = std::function<void(gem::Record&)>;
    /// Runs a rule over the record; the markers follow it, also where it fails half-way.
    void apply(const Rule& rule);
    /// Judges one field.
    void judge(gem::Control field, gem::Moment moment);

    /// The record with its texts.
    [[nodiscard]] gem::Record read() const;

    /// Whether cmbVarFormat offers the format, letter case apart.
    [[nodiscard]] bool lCheckFormat(const QString& format) const;

    /// What the record being edited holds in a column of the file; empty for a new one.
    [[nodiscard]] std::string stored(std::string_view column) const;

    /// Forgets what belongs to the former edit.
    void beginEdit() { judgedAgainstBlank_ = gem::Control::None; }

private:
    void mark(const gem::Record& before, const gem::Record& after);

    form::Window& window_;
    gem::Control judgedAgainstBlank_ = gem::Control::None;
};

}  // namespace stelvan::checks
