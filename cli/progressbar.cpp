// SPDX-License-Identifier: MIT
#include "progressbar.h"

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

void ProgressBar::show(int percent)
{
    if (!m_visible || percent == m_percent)
        return;
    m_percent = percent;
    constexpr int width = 40;
    const int filled = std::clamp(percent * width / 100, 0, width);
    const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
    std::fprintf(stderr, "\r[%s] %3d%%", bar.c_str(), percent);
    std::fflush(stderr);
}

} // namespace tadata::cli
