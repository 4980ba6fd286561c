#include "db/connection.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "db/connection_impl.h"
#include "db/error_map.h"
#include "sql/dialect.h"

namespace stelvan::db {

namespace {

constexpr std::string_view kProvider = "Microsoft.Jet.OLEDB.4.0";

}  // namespace

const std::shared_ptr<OpenDatabase>& Connection::Impl::usable() const {
    if (open == nullptr) throw connectionUnusable();
    return open;
}

Connection::Connection() : impl_(std::make_unique<Impl>()) {}
Connection::~Connection() = default;

void Connection::setConnectionText(std::string text) {
    if (impl_->open != nullptr) throw objectOpen();
    impl_->text = std::move(text);
}

const std::string& Connection::connectionText() const {
    return impl_->text;
}

void Connection::open() {
    if (impl_->open != nullptr) throw objectOpen();
    const ConnectionText text = ConnectionText::parse(impl_->text);
    if (!base::sameWord(text.provider, kProvider)) throw noSuchProvider();
    impl_->open = translated(Through::Statement, [&text] {
        return std::make_shared<OpenDatabase>(
            text.dataSource, text.writable ? jet::Access::ReadWrite : jet::Access::ReadOnly);
    });
}

ObjectState Connection::state() const {
    return impl_->open == nullptr ? ObjectState::Closed : ObjectState::Open;
}

void Connection::execute(const std::string& sql) {
    translated(Through::Statement, [&] { impl_->usable()->engine().execute(sql); });
}

void Connection::close() {
    if (impl_->open == nullptr) throw objectClosed();
    impl_->open.reset();
}

}  // namespace stelvan::db
