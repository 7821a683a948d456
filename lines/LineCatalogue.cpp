#include "lines/LineCatalogue.h"

#include "lines/LineInfo.h"

#include <utility>

LineCatalogue::~LineCatalogue() { qDeleteAll(m_records); }

QList<QObject *> LineCatalogue::replace(const QList<QObject *> &areas)
{
    QList<QObject *> records = areas;
    for (const QObject *area : areas) {
        records += static_cast<const LineInfo *>(area)->getChildItem();
    }
    m_areas = areas;
    return std::exchange(m_records, records);
}
