#pragma once

#include <QList>
#include <QObject>

// Owns the records of the catalogue in use: the areas, their lines and their "Fastest" entries.
class LineCatalogue {
public:
    LineCatalogue() = default;
    ~LineCatalogue();
    Q_DISABLE_COPY(LineCatalogue)

    const QList<QObject *> &areas() const { return m_areas; }

    // Takes the areas over with all that they hold now. Returns the records that were there before;
    // they are the caller's to release.
    QList<QObject *> replace(const QList<QObject *> &areas);

private:
    QList<QObject *> m_areas;
    // Kept apart: the lists of an area can be written from the scenes.
    QList<QObject *> m_records;
};
