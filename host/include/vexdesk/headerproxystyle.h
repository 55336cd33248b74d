// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtWidgets/QProxyStyle>

/// The style of the headers of the terminal's tables: titles are centred over their columns and
/// are not printed bold where cells are selected. User-interface thread only.
class VEXDESK_GUI_EXPORT HeaderProxyStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    /// The one style object, for QWidget::setStyle. It lives as long as the application object,
    /// which must exist.
    static HeaderProxyStyle* instance();

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

private:
    HeaderProxyStyle();
    ~HeaderProxyStyle() override;
};
