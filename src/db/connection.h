// A connection to the GEM database, addressed by a provider connection text.
//
// Opening recognises the file; between statements no lock, page or row is held. Connections opened
// while a UnitOfWork of this process is open on the same file take part in it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/run_time_error.h"
#include "jet/tables/row_change.h"

namespace stelvan::db {

enum class ObjectState { Closed = 0, Open = 1 };

/// What a connection text asks for. `Data Source=` and `Mode=` are found wherever they stand, keys
/// without regard to letter case; the path is taken as it is, up to a following "; Mode=" or the
/// end.
struct ConnectionText {
    std::string provider;
    std::string dataSource;
    bool readable = true;
    bool writable = true;
    static ConnectionText parse(std::string_view text);
};

class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void setConnectionText(std::string text);
    [[nodiscard]] const std::string& connectionText() const;

    /// Throws RunTimeError with the provider's number and text; 3705 when open already.
    void open();
    [[nodiscard]] ObjectState state() const;
    /// Runs one statement that returns no rows; its own unit of work unless one is open.
    /// Throws RunTimeError (3709 when closed).
    void execute(const std::string& sql);
    /// Throws 3704 when closed already.
    void close();

    struct Impl;
    [[nodiscard]] Impl& impl() { return *impl_; }

private:
    std::unique_ptr<Impl> impl_;
};

/// One unit of work on a database file: every Connection and Recordset of this process takes part
/// while it lives. Without commit() everything is undone. Failures are RunTimeError.
class UnitOfWork {
public:
    enum class Notes { None, RowChanges };
    explicit UnitOfWork(const std::string& path, Notes notes = Notes::None);
    ~UnitOfWork();
    UnitOfWork(const UnitOfWork&) = delete;
    UnitOfWork& operator=(const UnitOfWork&) = delete;
    void commit();
    /// What the unit did to rows, where it was asked to note that; true only after commit().
    [[nodiscard]] jet::RowChanges changes();

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace stelvan::db
