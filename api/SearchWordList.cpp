#include "api/SearchWordList.h"

#include <algorithm>

void SearchWordList::append(const QString &word)
{
    if (word.size() < 3) {
        return;
    }
    searchWordList.erase(std::remove_if(searchWordList.begin(), searchWordList.end(),
                             [&word](const QString &entry) { return word.contains(entry); }),
        searchWordList.end());
    const bool covered = std::any_of(searchWordList.cbegin(), searchWordList.cend(),
        [&word](const QString &entry) { return entry.contains(word); });
    if (!covered) {
        searchWordList.append(word);
    }
}
