#include "installer/Operating.h"

#include "base/ExecutableDirectory.h"
#include "installer/CopyQueue.h"

Operating::Operating(QObject *parent)
    : QObject(parent)
    , m_copyListener(std::make_shared<CopyListener>([this] { emit copyDirectorySuccess(); }))
{
}

Operating::~Operating() { m_copyListener->detach(); }

QString Operating::getCurrentPath() const { return executableDirectory(); }
