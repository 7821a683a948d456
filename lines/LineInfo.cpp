#include "lines/LineInfo.h"

#include <QMetaType>

#include <utility>

namespace {
// The scenes read the two lists of an area as lists of objects.
[[maybe_unused]] const int objectListType = qRegisterMetaType<QList<QObject *>>("QList<QObject*>");
} // namespace

LineInfo::LineInfo(QObject *parent)
    : QObject(parent)
{
}

LineInfo::LineInfo(LineValues &&values)
    : m_values(std::move(values))
{
}
