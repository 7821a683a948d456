#pragma once

#include <QtTest>

#include <any>
#include <tuple>

Q_DECLARE_METATYPE(std::any)

// Rows of values of any types. A "_data" function says `const Table<int, QString> row;` and then
// `row("least", 1, "one");`, its test `const auto [number, text] = Table<int, QString>::fetch();`.
template <typename... Values> struct Table {
    Table() { QTest::addColumn<std::any>("row"); }

    void operator()(const char *name, const Values &...values) const
    {
        QTest::newRow(name) << std::any(std::make_tuple(values...));
    }

    static std::tuple<Values...> fetch()
    {
        QFETCH(std::any, row);
        return std::any_cast<std::tuple<Values...>>(row);
    }
};

// Rows of a type with named fields. A "_data" function says `const Rows<Refusal> row;` and then
// `row("position as text", {reply, "no", 2});`, its test `const auto [reply, message, position] =
// Rows<Refusal>::fetch();`.
template <typename Row> struct Rows {
    Rows() { QTest::addColumn<std::any>("row"); }

    void operator()(const char *name, const Row &row) const
    {
        QTest::newRow(name) << std::any(row);
    }

    static Row fetch()
    {
        QFETCH(std::any, row);
        return std::any_cast<Row>(row);
    }
};

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
}

inline bool put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

inline bool putProgram(const QString &path, const QByteArray &shellLines)
{
    return put(path, "#!/bin/sh\n" + shellLines)
        && QFile::setPermissions(path, QFile::Permissions(0x7700));
}

inline QByteArray json(const QString &text) { return text.toUtf8().replace('\'', '"'); }
