#pragma once

#include "core/store/SqliteLetters.h"

#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

/// A database file during the build, through SQLite's C interface. Failures throw std::runtime_error.
class Database {
  public:
    enum class Use { Create, Read };

    /// Create starts with an empty file; Read opens an existing one.
    Database(const std::filesystem::path& path, Use use) {
        if (use == Use::Create)
            std::filesystem::remove(path);
        const int flags =
            use == Use::Create ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE : SQLITE_OPEN_READONLY;
        if (sqlite3_open_v2(path.string().c_str(), &handle, flags, nullptr) != SQLITE_OK) {
            sqlite3_close(handle);
            throw std::runtime_error("cannot open " + path.string());
        }
        SqliteLetters::add(handle);
    }
    ~Database() { sqlite3_close(handle); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void run(const std::string& sql) {
        if (sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string(sqlite3_errmsg(handle)) + " in: " + sql.substr(0, 120));
    }

    /// All rows as text; null becomes an empty text.
    std::vector<std::vector<std::string>> rows(const std::string& sql) {
        std::vector<std::vector<std::string>> found;
        const auto collect = [](void* list, int count, char** texts, char**) {
            auto& row = static_cast<std::vector<std::vector<std::string>>*>(list)->emplace_back();
            for (int i = 0; i < count; ++i)
                row.emplace_back(texts[i] ? texts[i] : "");
            return 0;
        };
        if (sqlite3_exec(handle, sql.c_str(), collect, &found, nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string(sqlite3_errmsg(handle)) + " in: " + sql);
        return found;
    }

    /// The first column of all rows.
    std::vector<std::string> column(const std::string& sql) {
        std::vector<std::string> values;
        for (const auto& row : rows(sql))
            values.push_back(row.front());
        return values;
    }

    sqlite3* handle = nullptr;
};
