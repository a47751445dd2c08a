#include "io/SaveWay.h"

SaveWay chooseWay(const FileFacts& file)
{
    if (!file.exists)
        return file.folderRefuses ? SaveWay::Refuse : SaveWay::Replace;
    if (!file.isRegular || !file.mayBeWritten)
        return SaveWay::Refuse;

    const bool othersWouldNotice = file.hasOtherNames || file.ownerWouldChange || file.groupWouldChange
                                   || file.permissionsWouldChange || file.attributesWouldChange;
    return file.folderRefuses || othersWouldNotice ? SaveWay::InPlace : SaveWay::Replace;
}
