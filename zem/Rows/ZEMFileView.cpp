// SPDX-License-Identifier: MIT
#include "zem/Rows/ZEMFileView.h"

#include "qip/Support/qipAssert.h"

#include <cstring>
#include <new>

ZEMFileView::ZEMFileView() : _filename(nullptr) {}

ZEMFileView::~ZEMFileView()
{
    delete[] _filename;
    delete[] _label;
}

const char* ZEMFileView::filename() const
{
    return _filename == nullptr ? "" : _filename;
}

void ZEMFileView::filename(const char* path)
{
    qipAssert(path != nullptr);
    const char* slash = strrchr(path, '/');
    if (slash == nullptr) {
        setName(_directory, "");
        setName(_filename, path);
    } else {
        setName(_directory, path, static_cast<size_t>(slash - path));
        setName(_filename, slash + 1);
    }
}

void ZEMFileView::setLabel()
{
    const size_t directoryLength = _directory == nullptr ? 0 : strlen(_directory);
    const size_t filenameLength = _filename == nullptr ? 0 : strlen(_filename);
    const bool slash = _directory != nullptr && _filename != nullptr;

    delete[] _label;
    _label = new (std::nothrow) char[directoryLength + filenameLength + 2];
    if (_label == nullptr) {
        return;
    }
    char* end = _label;
    if (directoryLength > 0) {
        memcpy(end, _directory, directoryLength);
        end += directoryLength;
    }
    if (slash) {
        *end++ = '/';
    }
    if (filenameLength > 0) {
        memcpy(end, _filename, filenameLength);
        end += filenameLength;
    }
    *end = '\0';
}
