#pragma once

/// How new bytes get into a file that may be there already.
enum class SaveWay
{
    Refuse,  ///< not at all: what is there is no file, or not to be written
    Replace, ///< a new file beside it takes its place when it is whole and on the disk
    InPlace, ///< into the file itself, after a copy of what it holds was put away
};

/// What there is to know before a file is saved. A file that is not there is the default.
struct FileFacts
{
    bool exists = false;       ///< there is something of that name
    bool isRegular = false;    ///< neither folder nor pipe nor device, and it could be looked at
    bool mayBeWritten = false; ///< by this user; for root, by anybody at all
    bool hasOtherNames = false;
    bool folderRefuses = false; ///< takes no new file, or does not let this one be replaced

    // What others would find changed if a new file took its place.
    bool ownerWouldChange = false;
    bool groupWouldChange = false;
    bool permissionsWouldChange = false;
    bool attributesWouldChange = false; ///< access control lists are among them
};

/// The way that changes nothing but the content.
SaveWay chooseWay(const FileFacts& file);
