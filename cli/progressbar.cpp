// SPDX-License-Identifier: MIT
#include "progressbar.h"

#include "output.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include <unistd.h>

namespace tadata::cli {

ProgressBar::ProgressBar()
    : m_visible(isatty(STDERR_FILENO) != 0)
{}

ProgressBar::~ProgressBar()
{
    if (m_visible && m_percent >= 0)
        std::fputc('\n', stderr);
}

void ProgressBar::show(int percent, const QString& text)
{
    if (!m_visible || (percent == m_percent && text == m_text))
        return;
    m_percent = percent;
    m_text = text;
    constexpr int width = 40;
    const int filled = std::clamp(percent * width / 100, 0, width);
    const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
    std::fprintf(stderr, "\r[%s] %3d%%", bar.c_str(), percent);
    if (!text.isEmpty()) {
        constexpr int taken = width + 9;
        const QString room = text.left(std::max(screenWidth() - taken, 0));
        std::fprintf(stderr, "  %s\x1b[K", room.toUtf8().constData());
    }
    std::fflush(stderr);
}

void ProgressBar::clear()
{
    if (!m_visible || m_percent < 0)
        return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
    m_percent = -1;
}

} // namespace tadata::cli
