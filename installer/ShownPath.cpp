#include "installer/ShownPath.h"

namespace {

constexpr int longest = 120; // characters

} // namespace

QString shownPath(const QString &path)
{
    QString shown;
    for (const QChar character : path) {
        const QChar::Category category = character.category();
        const bool isDrawn = category != QChar::Other_Control && category != QChar::Other_Format
            && category != QChar::Separator_Line && category != QChar::Separator_Paragraph;
        shown += isDrawn ? character : QChar(QLatin1Char('?'));
    }
    if (shown.size() > longest) {
        const int half = longest / 2;
        shown = shown.left(half) + QChar(0x2026) + shown.right(half);
    }
    return shown;
}
