// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QLabel>

namespace vexdesk {

/// Shows plain text in the lines that it is given, whatever room the text would like. Parts of it
/// with three blanks between them are not torn apart where they can be whole; what has no room in
/// the last line is an ellipsis there, and all of it is in the tool tip. User-interface thread
/// only.
class FittedLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit FittedLabel(QWidget* parent = nullptr);
    ~FittedLabel() override;

    /// Has the height of so many lines, whether there is text for them or not.
    void setLines(int lines);
    int lines() const { return m_lines; }
    /// So many of them a text would have use for at this width.
    int linesFor(const QString& text, int width) const;
    /// What of the text is seen now, line by line.
    QStringList shownLines() const;
    bool isElided() const;

    /// What all of the text would need; the label's own height is that of its lines.
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return false; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int heightOf(int lines) const;

    int m_lines = 1;
};

} // namespace vexdesk
