#pragma once

#include <vexdesk/ioptionspagebase.h>

class QWidget;

/// A page of the options dialog, given to ICore::addOptionsPage. The page object is cheap; its
/// widget is made when the dialog shows it.
///
/// Call order for one run of the dialog: createPage at most once, apply for each press of "OK" or
/// "Apply", finish at the end. User-interface thread only.
class IOptionsPage : public IOptionsPageBase
{
public:
    /// Makes the widget, filled with the stored values. The dialog owns it.
    virtual QWidget* createPage(QWidget* parent) = 0;
    /// Stores what the widget shows.
    virtual void apply() = 0;
    /// The widget is about to be destroyed by the dialog.
    virtual void finish() = 0;
};

Q_DECLARE_INTERFACE(IOptionsPage, "com.oxa.vexdesk.Plugin.IOptionsPage/1.0")
