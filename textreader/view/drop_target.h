#pragma once

#include <wx/dnd.h>

#include <functional>
#include <string>

namespace voxtrel::textreader {

// Takes a file that is dropped on a window; of several the first.
class FileDropTarget final : public wxFileDropTarget {
public:
    explicit FileDropTarget(std::function<void(const std::wstring& path)> dropped)
        : dropped_(std::move(dropped))
    {
    }

    bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& files) override
    {
        if (files.empty())
            return false;
        dropped_(files[0].ToStdWstring());
        return true;
    }

private:
    std::function<void(const std::wstring& path)> dropped_;
};

} // namespace voxtrel::textreader
