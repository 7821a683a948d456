#include "settings/DataManager.h"

#include "base/DebugLine.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int areasKept = 3;

void countOneUse(int &usedNum) // a file may hold any count
{
    usedNum += usedNum < std::numeric_limits<int>::max() ? 1 : 0;
}

void countLine(QList<CommonUsedLine> &lines, int lineId)
{
    bool isKnown = false;
    for (CommonUsedLine &line : lines) {
        if (line.lineId == lineId) {
            countOneUse(line.usedNum);
            isKnown = true;
        }
    }
    if (!isKnown) {
        lines.prepend({lineId, 1});
    }
}

} // namespace

void DataManager::changeLineUsedNum(int lineId, const QString &lineArea)
{
    debugLine() << "修改线路使用次数:" << lineId << ":" << lineArea;
    const auto area = std::find_if(commonUsedAreaList.begin(), commonUsedAreaList.end(),
        [&lineArea](const CommonUsedArea &known) { return known.lineArea == lineArea; });
    if (area != commonUsedAreaList.end()) {
        countOneUse(area->usedNum);
        countLine(area->lineUsedList, lineId);
    } else {
        debugLine() << "此地区没有使用过则进行追加保存";
        commonUsedAreaList.prepend({lineArea, 1, {{lineId, 1}}});
    }

    sortCommonUsedAreas();
    debugLine() << "常用线路个数:" << commonUsedAreaList.size();
    // One for the one that may have come in: a longer list from a file shrinks no faster than that.
    if (commonUsedAreaList.size() > areasKept) {
        commonUsedAreaList.removeAt(areasKept);
        debugLine() << "常用线路个数:" << commonUsedAreaList.size();
    }
}

void DataManager::deleteCommonUsedLine(int /*lineId*/) { }

// The list is sorted once for each of its areas, but only as long as that still changes anything:
// sorting what is in order would let a file with 100,000 areas hold the start up for hours.
void DataManager::sortCommonUsedAreas()
{
    const auto isUsedMore = [](const CommonUsedArea &left, const CommonUsedArea &right) {
        return left.usedNum > right.usedNum;
    };
    const auto first = commonUsedAreaList.begin();
    const auto last = commonUsedAreaList.end();
    for (int pass = 0; pass < commonUsedAreaList.size(); ++pass) {
        if (std::is_sorted(first, last, isUsedMore)) {
            break;
        }
        std::sort(first, last, isUsedMore);
    }
}
