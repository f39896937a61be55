#include "Apps/Player/Controls/ImGuiSurface.h"

#include <GLES2/gl2.h>
#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>

#include <array>
#include <filesystem>
#include <string>

namespace {

constexpr float kFontSize = 16;

/// Latin, Greek and Cyrillic letters and punctuation, which cover most file names and messages.
constexpr std::array<ImWchar, 9> kGlyphs{0x20,  0x24f,  0x370,  0x3ff, 0x400,
                                         0x4ff, 0x2010, 0x2026, 0};

/// The path of an installed font; empty if none of these is installed.
std::string fontFile() {
    for (const char* file : {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
                             "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf",
                             "/usr/share/fonts/truetype/freefont/FreeSans.ttf"}) {
        std::error_code unknown; // treated as missing
        if (std::filesystem::is_regular_file(file, unknown))
            return file;
    }
    return {};
}

} // namespace

ImGuiSurface::ImGuiSurface() {
    ImGui::CreateContext();
    ImGui::GetIO().IniFilename = nullptr;
    ImGui::GetIO().LogFilename = nullptr;
    ImGui_ImplOpenGL3_Init();
}

ImGuiSurface::~ImGuiSurface() {
    ImGui_ImplOpenGL3_Shutdown();
    ImGui::DestroyContext();
}

void ImGuiSurface::loadFont(double scale) {
    ImFontAtlas& atlas = *ImGui::GetIO().Fonts;
    const auto sizePx = static_cast<float>(kFontSize * scale);
    const std::string file = fontFile();
    atlas.Clear();
    ImFont* font = nullptr;
    if (!file.empty())
        font = atlas.AddFontFromFileTTF(file.c_str(), sizePx, nullptr, kGlyphs.data());
    if (!font) {
        ImFontConfig config;
        config.SizePixels = sizePx;
        atlas.AddFontDefault(&config);
    }
    ImGui_ImplOpenGL3_DestroyFontsTexture();
    ImGui_ImplOpenGL3_CreateFontsTexture();
    fontScale_ = scale;
}

void ImGuiSurface::draw(platform::Size size, double scale,
                        const std::function<void(ImDrawList&)>& paint) {
    ImGuiIO& io = ImGui::GetIO();
    io.DisplaySize = {static_cast<float>(size.width), static_cast<float>(size.height)};
    io.DisplayFramebufferScale = {static_cast<float>(scale), static_cast<float>(scale)};
    ImGui_ImplOpenGL3_NewFrame();
    if (scale != fontScale_)
        loadFont(scale);
    ImGui::NewFrame();
    paint(*ImGui::GetForegroundDrawList());
    ImGui::Render();
    ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}
