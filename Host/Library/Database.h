#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace helmo {

/** Bytes that are no text, sort keys for example. */
struct Blob {
    std::string bytes;
    friend bool operator==(const Blob&, const Blob&) = default;
};

using SqlValue = std::variant<std::monostate, std::int64_t, double, std::string, Blob>;

/** A statement with what is bound to its marks. */
struct SqlQuery {
    std::string text;
    std::vector<SqlValue> values;
    friend bool operator==(const SqlQuery&, const SqlQuery&) = default;
};

/** What SQLite reports. Thrown within the library's own files only; nothing of it crosses `MediaLibrary`. */
class DatabaseError : public std::runtime_error {
public:
    /** What is the matter, as far as it makes a difference. */
    enum class Kind {
        /** The file itself is damaged or no database of ours. */
        Damage,
        /** Others hold a lock, for longer than was waited. */
        Busy,
        /** The disk, or what may be used of it, is full. */
        NoRoom,
        ReadOnly,
        /** The disk fails. */
        Disk,
        Other
    };
    static const int damageCode;
    /** `systemError`: the errno behind the code, 0 without one. */
    DatabaseError(int code, const std::string& message, int systemError = 0)
        : std::runtime_error(message), _kind(kindOf(code, systemError)) {}
    Kind kind() const { return _kind; }
    bool isDamage() const { return _kind == Kind::Damage; }

private:
    static Kind kindOf(int code, int systemError);

    Kind _kind;
};

class Database;

/** A prepared statement in use; goes back to its connection's cache when destroyed. */
class Statement {
public:
    Statement(Database& database, std::string sql, sqlite3_stmt* handle)
        : _database(database), _sql(std::move(sql)), _handle(handle) {}
    Statement(Statement&& other) noexcept
        : _database(other._database),
          _sql(std::move(other._sql)),
          _handle(std::exchange(other._handle, nullptr)),
          _next(other._next) {}
    Statement& operator=(Statement&&) = delete;
    ~Statement();

    /** Binds to the next mark. */
    Statement& bind(const SqlValue& value);
    Statement& bind(std::int64_t value);
    Statement& bind(double value);
    Statement& bind(const std::string& text);
    Statement& bind(const Blob& blob);
    /** To the next row; false behind the last. */
    bool step();
    /** Steps to the end. */
    void run();
    /** Back to before the first row, all marks unbound. */
    void reset();

    bool isNull(int column) const;
    std::int64_t integer(int column) const;
    double number(int column) const;
    std::string text(int column) const;

private:
    Database& _database;
    std::string _sql;
    Statement& check(int code);

    sqlite3_stmt* _handle;
    int _next = 1;
};

/** One SQLite connection with its prepared statements. Used by one thread at a time. */
class Database {
public:
    /** `Immutable` reads a file that nobody writes and asks for no locks and no files beside it; what a
       writer left there is not seen. `Memory`: the file is a mere name, shared by the connections of this
       process. */
    enum class Access { ReadWrite, ReadOnly, Immutable, Memory };

    /** Opens `file`, making it when it is missing and may be written. Statements wait `patience` for other
       connections. Throws. */
    Database(const std::filesystem::path& file, Access access,
             std::chrono::milliseconds patience = std::chrono::seconds(5));
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /** How long statements wait for other connections from now on. */
    void setPatience(std::chrono::milliseconds patience);
    /** Prepared, with the values bound. */
    Statement prepare(const SqlQuery& query);
    /** Prepares and steps to the end. */
    void run(const SqlQuery& query) { prepare(query).run(); }
    /** Runs statements without marks and answers. */
    void execute(const std::string& sql);
    /** First column of the first row; 0 without one. */
    std::int64_t integer(const SqlQuery& query);
    std::int64_t lastInsertedRow() const;
    /** Rows changed by the last statement. */
    std::int64_t changes() const;

private:
    friend class Statement;
    Statement prepared(const std::string& sql);
    void giveBack(const std::string& sql, sqlite3_stmt* handle);
    [[noreturn]] void fail(int code) const;

    sqlite3* _handle = nullptr;
    std::unordered_map<std::string, sqlite3_stmt*> _idle;
};

/** All or nothing: rolled back unless committed. */
class Transaction {
public:
    explicit Transaction(Database& database) : _database(database) { _database.execute("BEGIN IMMEDIATE"); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();
    void commit();

private:
    Database& _database;
    bool _open = true;
};

}  // namespace helmo
