#include "Host/Library/Database.h"

#include <cerrno>
#include <cstring>

#include <sqlite3.h>
#include <unicode/unistr.h>

namespace helmo {

namespace {

constexpr std::size_t maximumIdleStatements = 96;

icu::UnicodeString folded(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    if (!text) return {};
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text, sqlite3_value_bytes(value))).foldCase();
}

/** contains_text(text, part): whether `part` occurs in `text`, whatever the case, in any script. */
void containsText(sqlite3_context* context, int, sqlite3_value** arguments) {
    sqlite3_result_int(context, folded(arguments[0]).indexOf(folded(arguments[1])) >= 0);
}

/** The name to open `file` by: an address, since that alone can say how it is to be read. */
std::string addressOf(const std::filesystem::path& file, Database::Access access) {
    std::string address = file.is_absolute() ? "file://" : "file:";
    for (const char character : file.string()) {
        constexpr std::string_view escaped = "%?#";
        constexpr std::string_view digits = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(character);
        if (escaped.find(character) == std::string_view::npos)
            address += character;
        else
            address += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    if (access == Database::Access::Immutable) address += "?immutable=1";
    if (access == Database::Access::Memory) address += "?vfs=memdb";
    return address;
}

int flagsOf(Database::Access access) {
    const bool onlyReads = access == Database::Access::ReadOnly || access == Database::Access::Immutable;
    const int flags = onlyReads ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    return flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI;
}

}  // namespace

const int DatabaseError::damageCode = SQLITE_CORRUPT;

DatabaseError::Kind DatabaseError::kindOf(int code, int systemError) {
    if (systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG) return Kind::NoRoom;
    if (systemError == EROFS) return Kind::ReadOnly;
    // Only what a long list is sorted in; the database itself may be well.
    if (code == SQLITE_IOERR_GETTEMPPATH) return Kind::Other;
    switch (code & 0xff) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return Kind::Damage;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return Kind::Busy;
        case SQLITE_FULL:
            return Kind::NoRoom;
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return Kind::ReadOnly;
        case SQLITE_IOERR:
            return Kind::Disk;
        default:
            return Kind::Other;
    }
}

Statement::~Statement() {
    if (!_handle) return;
    reset();
    _database.giveBack(_sql, _handle);
}

Statement& Statement::check(int code) {
    if (code != SQLITE_OK) _database.fail(code);
    return *this;
}

Statement& Statement::bind(std::int64_t value) { return check(sqlite3_bind_int64(_handle, _next++, value)); }
Statement& Statement::bind(double value) { return check(sqlite3_bind_double(_handle, _next++, value)); }

Statement& Statement::bind(const std::string& text) {
    return check(
        sqlite3_bind_text64(_handle, _next++, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

Statement& Statement::bind(const Blob& blob) {
    return check(
        sqlite3_bind_blob64(_handle, _next++, blob.bytes.data(), blob.bytes.size(), SQLITE_TRANSIENT));
}

Statement& Statement::bind(const SqlValue& value) {
    if (std::holds_alternative<std::monostate>(value)) return check(sqlite3_bind_null(_handle, _next++));
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return bind(*integer);
    if (const auto* number = std::get_if<double>(&value)) return bind(*number);
    if (const auto* text = std::get_if<std::string>(&value)) return bind(*text);
    return bind(std::get<Blob>(value));
}

bool Statement::step() {
    errno = 0;
    const int code = sqlite3_step(_handle);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) _database.fail(code);
    return false;
}

void Statement::run() {
    while (step()) continue;
}

void Statement::reset() {
    sqlite3_reset(_handle);
    sqlite3_clear_bindings(_handle);
    _next = 1;
}

bool Statement::isNull(int column) const { return sqlite3_column_type(_handle, column) == SQLITE_NULL; }
std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(_handle, column); }
double Statement::number(int column) const { return sqlite3_column_double(_handle, column); }

std::string Statement::text(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(_handle, column));
    return bytes ? std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(_handle, column)))
                 : std::string();
}

Database::Database(const std::filesystem::path& file, Access access, std::chrono::milliseconds patience) {
    errno = 0;
    const int code = sqlite3_open_v2(addressOf(file, access).c_str(), &_handle, flagsOf(access), nullptr);
    try {
        if (code != SQLITE_OK) fail(code);
        sqlite3_extended_result_codes(_handle, 1);
        setPatience(patience);
        sqlite3_create_function_v2(_handle, "contains_text", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   containsText, nullptr, nullptr, nullptr);
        execute("PRAGMA foreign_keys = ON");
        if (access == Access::ReadWrite) execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
    } catch (...) {
        sqlite3_close(_handle);
        throw;
    }
}

void Database::setPatience(std::chrono::milliseconds patience) {
    sqlite3_busy_timeout(_handle, static_cast<int>(patience.count()));
}

Database::~Database() {
    for (const auto& [sql, handle] : _idle) sqlite3_finalize(handle);
    sqlite3_close(_handle);
}

Statement Database::prepared(const std::string& sql) {
    if (auto cached = _idle.extract(sql)) return Statement(*this, sql, cached.mapped());
    sqlite3_stmt* handle = nullptr;
    const int code = sqlite3_prepare_v3(_handle, sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    if (code != SQLITE_OK) fail(code);
    return Statement(*this, sql, handle);
}

Statement Database::prepare(const SqlQuery& query) {
    Statement statement = prepared(query.text);
    for (const SqlValue& value : query.values) statement.bind(value);
    return statement;
}

void Database::execute(const std::string& sql) {
    errno = 0;
    const int code = sqlite3_exec(_handle, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) fail(code);
}

std::int64_t Database::integer(const SqlQuery& query) {
    Statement statement = prepare(query);
    return statement.step() ? statement.integer(0) : 0;
}

std::int64_t Database::lastInsertedRow() const { return sqlite3_last_insert_rowid(_handle); }
std::int64_t Database::changes() const { return sqlite3_changes64(_handle); }

void Database::giveBack(const std::string& sql, sqlite3_stmt* handle) {
    if (_idle.size() >= maximumIdleStatements || !_idle.emplace(sql, handle).second) sqlite3_finalize(handle);
}

void Database::fail(int code) const {
    // What SQLite itself keeps is gone once it has rolled back.
    const int primary = code & 0xff;
    const int systemError = primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN ? errno : 0;
    if (!_handle) throw DatabaseError(code, sqlite3_errstr(code));
    std::string message = sqlite3_errmsg(_handle);
    if (primary == SQLITE_IOERR && systemError != 0)
        message += std::string(": ") + std::strerror(systemError);
    throw DatabaseError(code, message, systemError);
}

Transaction::~Transaction() {
    if (!_open) return;
    try {
        _database.execute("ROLLBACK");
    } catch (const DatabaseError&) {
        // SQLite has already rolled back by itself.
    }
}

void Transaction::commit() {
    _database.execute("COMMIT");
    _open = false;
}

}  // namespace helmo
