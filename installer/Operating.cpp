#include "installer/Operating.h"

#include "base/ExecutableDirectory.h"
#include "installer/CopyQueue.h"
#include "installer/PathLook.h"

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
    if (m_pathLook == nullptr) {
        m_pathLook = new PathLook(this);
        connect(m_pathLook, &PathLook::looked, this, &Operating::installPathLookedAt);
    }
    m_pathLook->start(path);
}
