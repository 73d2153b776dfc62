#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace mirelo::sqlite {

// A connection to a database file, for one thread. Calls return SQLite's extended result codes.
class Database {
 public:
  // Opens an existing file for reading and writing. Raises nothing: a failure shows at the first use.
  explicit Database(const std::string& path);

  // One in memory, which goes with its connection.
  static Database InMemory() { return Database(":memory:"); }

  // The bytes of the file that this database is, or would be; empty where there is no memory for them.
  std::string Bytes() const;

  // The first bytes of the file as they lie there, at most `count`; none when it cannot be read. Unlike a
  // statement this looks past locks and logs, and nothing beside the file is made or changed for it.
  std::string FileStart(std::size_t count) const;

  // The path that it was opened by.
  const std::string& path() const { return path_; }

  // Where the file and its log are, links followed.
  std::string FilePath() const;
  std::string LogPath() const { return FilePath() + "-wal"; }
  std::string LogIndexPath() const { return FilePath() + "-shm"; }

  // Whether the last connection that closes moves what the write-ahead log holds into the file, and removes
  // the log. True at first.
  void EmptyLogAtEnd(bool wanted);

  // How long a call waits for another connection's lock before it gives up.
  void BusyTimeout(std::chrono::milliseconds timeout);

  // Runs statements that give no rows.
  int Execute(const char* sql);

  // The rows that the last statement inserted, changed or deleted.
  std::int64_t Changes() const;

  std::int64_t LastInsertedId() const;

  // False when none was begun, and when a failure has ended it before its time.
  bool IsInTransaction() const;

  // Whether the path no longer leads to the file that is open, so that nobody would find what is written.
  bool HasMoved() const;

  // The last failure in SQLite's words.
  std::string Message() const;
  int LastResult() const;
  // The errno behind the failure to read or write that the last call met.
  int SystemError() const;

  sqlite3* handle() const { return connection_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* connection) const;
  };
  std::string path_;
  std::unique_ptr<sqlite3, Close> connection_;
};

// A statement that is prepared once and run many times; it must not outlive its database.
class Statement {
 public:
  // Preparing fails when the database cannot be read or has other tables; the runs then give the failure.
  Statement(Database& database, const char* sql);

  sqlite3_stmt* handle() const { return statement_.get(); }
  int prepared() const { return prepared_; }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  int prepared_;
};

// One run of a statement. A read transaction lasts as long as its run, so a run ends with the block it stands
// in.
class Run {
 public:
  explicit Run(const Statement& statement) : statement_(statement) {}
  ~Run();
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // Parameters from left to right. Bytes and texts must stay as they are until the end of the run.
  Run& Bind(std::int64_t integer);
  Run& Bind(std::string_view bytes);
  Run& BindReal(double number);
  Run& BindText(std::string_view text);
  Run& BindNull();

  // SQLITE_ROW, SQLITE_DONE or a failure.
  int Step();
  bool StepToRow();

  // Columns of the row, from 0. Bytes are valid until the next step.
  std::int64_t Integer(int column) const;
  std::string_view Bytes(int column) const;  // of a text, too

 private:
  const Statement& statement_;
  int parameters_ = 0;
};

}  // namespace mirelo::sqlite
