#pragma once

#include <QtTest>

#include <any>

Q_DECLARE_METATYPE(std::any)

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
