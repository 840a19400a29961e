#pragma once

#include "common/XString.h"

#include <cstdint>
#include <vector>

namespace huge {

/// What a document file holds: the image of the table, and the image of its view, which the engine
/// carries along without reading it. In the file each stands behind its length, and nothing else.
struct XDocumentFile {
    std::vector<uint8_t> table;
    std::vector<uint8_t> view;

    /// The bytes of the file. std::runtime_error for an image of 2 GB and more.
    std::vector<uint8_t> toVector() const;
    /// The reverse; std::runtime_error, which tells the offset, for anything else than two blocks.
    static XDocumentFile fromVector(const std::vector<uint8_t>& bytes);

    /// Reads a file whole. std::runtime_error, with the path and the reason, if that fails, if it
    /// is no regular file or no document.
    static XDocumentFile load(const xstd::XString& path);
    /// Writes a new file in the same folder and puts it in the place of the old one when all of it
    /// is on the disk: whatever fails, the old file is there as it was. Where the folder allows no
    /// new file, the old one is written over, after a copy of it has been made among the temporary
    /// files; the copy goes when all is done, and the failure names it otherwise. A link is
    /// followed, and the permissions of the old file are kept. std::runtime_error with the path and
    /// the reason.
    void save(const xstd::XString& path) const;
};

} // namespace huge
