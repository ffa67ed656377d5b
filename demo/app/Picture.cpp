#include "demo/app/Picture.h"

#include <wincodec.h>

#include "com/ComPtr.h"
#include "com/Error.h"

namespace tamvelo::demo {

namespace {

using com::Check;
using com::ComPtr;

/// A copy of what a window shows. Of its own surface, not of the screen's: there may be no screen.
class Copy {
public:
    explicit Copy(HWND window) : m_memory(CreateCompatibleDC(nullptr)) {
        RECT place;
        GetWindowRect(window, &place);
        const int width = place.right - place.left;
        const int height = place.bottom - place.top;
        const HWND focus = GetFocus();
        HideCaret(focus); // it blinks, and the same window shall give the same picture
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const HDC from = GetWindowDC(window);
        m_bitmap = CreateCompatibleBitmap(from, width, height);
        const HGDIOBJ before = SelectObject(m_memory, m_bitmap);
        BitBlt(m_memory, 0, 0, width, height, from, 0, 0, SRCCOPY);
        SelectObject(m_memory, before);
        ReleaseDC(window, from);
        ShowCaret(focus);
    }
    ~Copy() {
        DeleteObject(m_bitmap);
        DeleteDC(m_memory);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    HBITMAP Bitmap() const { return m_bitmap; }

private:
    const HDC m_memory;
    HBITMAP m_bitmap = nullptr;
};

} // namespace

void SavePicture(HWND window, const std::wstring& path) {
    const Copy copy(window);
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICBitmap> bitmap;
    ComPtr<IWICStream> file;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    Check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                           reinterpret_cast<void**>(&factory)));
    Check(factory->CreateBitmapFromHBITMAP(copy.Bitmap(), nullptr, WICBitmapIgnoreAlpha, &bitmap));
    Check(factory->CreateStream(&file));
    Check(file->InitializeFromFilename(path.c_str(), GENERIC_WRITE),
          L"No se puede escribir «" + path + L"».");
    Check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder));
    Check(encoder->Initialize(file.Get(), WICBitmapEncoderNoCache));
    Check(encoder->CreateNewFrame(&frame, nullptr));
    Check(frame->Initialize(nullptr));
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    Check(frame->SetPixelFormat(&format));
    Check(frame->WriteSource(bitmap.Get(), nullptr));
    Check(frame->Commit());
    Check(encoder->Commit());
}

} // namespace tamvelo::demo
