#include "uninstaller/Uninstaller.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <system_error>

namespace {

// In the context of the installer where it has the same words.
constexpr struct {
    int error;
    const char *context;
    const char *text;
} reasons[] = {
    {EACCES, "main", QT_TRANSLATE_NOOP("main", "no rights")},
    {EPERM, "main", QT_TRANSLATE_NOOP("main", "no rights")},
    {EROFS, "main", QT_TRANSLATE_NOOP("main", "the disk is read-only")},
    {ENOENT, "uninstall", QT_TRANSLATE_NOOP("uninstall", "missing")},
    {EFBIG, "uninstall", QT_TRANSLATE_NOOP("uninstall", "too large")},
    {EBUSY, "uninstall", QT_TRANSLATE_NOOP("uninstall", "in use")},
    {EINVAL, "uninstall", QT_TRANSLATE_NOOP("uninstall", "leads out of the directory")},
    {ENOTDIR, "uninstall", QT_TRANSLATE_NOOP("uninstall", "leads out of the directory")},
    {ELOOP, "uninstall", QT_TRANSLATE_NOOP("uninstall", "leads out of the directory")},
    {EXDEV, "uninstall", QT_TRANSLATE_NOOP("uninstall", "leads out of the directory")},
};

QString reasonFor(int error)
{
    const auto *const found = std::find_if(std::begin(reasons), std::end(reasons),
        [error](const auto &row) { return row.error == error; });
    return found == std::end(reasons)
        ? QCoreApplication::translate("main", QT_TRANSLATE_NOOP("main", "unknown reason"))
        : QCoreApplication::translate(found->context, found->text);
}

QString toldOf(const RemovalReport::Failure &failure)
{
    constexpr int longest = 4096; // characters: a line of a manifest can be anything
    const QString name = failure.name.left(longest);
    return failure.error == 0 ? name : name + QStringLiteral(": ") + reasonFor(failure.error);
}

} // namespace

Uninstaller::Uninstaller(const Removal &removal, QObject *parent)
    : QObject(parent)
    , m_removal(removal)
{
}

Uninstaller::~Uninstaller()
{
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void Uninstaller::start()
{
    try {
        m_thread = std::thread([this] { work(); });
    } catch (const std::system_error &) {
        work();
    }
}

void Uninstaller::work()
{
    const RemovalReport report = m_removal.run([this](int percentage) {
        QMetaObject::invokeMethod(
            this, [this, percentage] { setPercentage(percentage); }, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        this, [this, report] { finish(report); }, Qt::QueuedConnection);
}

void Uninstaller::finish(const RemovalReport &report)
{
    m_report = report;
    emit finished();
    setPercentage(100);
}

QStringList Uninstaller::failed() const
{
    QStringList told;
    for (const RemovalReport::Failure &failure : m_report.failed) {
        told.append(toldOf(failure));
    }
    return told;
}

bool Uninstaller::lacksRights() const
{
    return std::any_of(m_report.failed.cbegin(), m_report.failed.cend(),
        [](const auto &failure) { return failure.error == EACCES || failure.error == EPERM; });
}

void Uninstaller::setPercentage(int percentage)
{
    m_percentage = percentage;
    emit percentageChanged();
}
