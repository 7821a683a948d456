#include "installer/Operating.h"

#include "base/ExecutableDirectory.h"
#include "installer/CopyQueue.h"

#include <QDir>

Operating::Operating(QObject *parent)
    : QObject(parent)
    , m_copyListener(std::make_shared<CopyListener>(CopyListener::Callbacks{
          [this] { emit copyDirectorySuccess(); },
          [this](
              bool copied, const QString &message) { emit sendSystemCmdResult(copied, message); },
      }))
{
}

Operating::~Operating() { m_copyListener->detach(); }

QString Operating::getCurrentPath() { return executableDirectory(); }

void Operating::lookAtInstallPath(const QString &path)
{
    QMetaObject::invokeMethod(
        this,
        [this, path] {
            emit installPathLookedAt(path, QString(), QUrl::fromLocalFile(QDir::homePath()));
        },
        Qt::QueuedConnection);
}
