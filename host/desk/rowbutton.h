// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QPushButton>

namespace vexdesk {

/// A row of the start page to click: picture, text, and a remark at the right edge.
class RowButton : public QPushButton
{
    Q_OBJECT

public:
    explicit RowButton(QWidget* parent = nullptr);
    ~RowButton() override;

    QString remark() const { return m_remark; }
    void setRemark(const QString& remark);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// Return presses it as the space bar does.
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintLight(QPainter& painter) const;

    QString m_remark;
};

} // namespace vexdesk
