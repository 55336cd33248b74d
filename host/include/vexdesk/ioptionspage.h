// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/ioptionspagebase.h>

class QWidget;

/// A page of the options dialog, given to ICore::addOptionsPage. The page object is cheap; its
/// widget is made when the dialog first shows the page.
///
/// Call order for one run of the dialog: createPage at most once; after it apply for each press of
/// "OK" or "Apply", none when the user only cancels; finish once, however the dialog goes. A page
/// that the user did not look at gets none of these calls. User-interface thread only.
///
/// An exception that leaves a call is shown to the user. One that leaves createPage, and a null
/// widget, put a note in the place of the page, and finish follows at once. One that leaves apply
/// keeps the dialog open; the other pages are applied all the same.
class IOptionsPage : public IOptionsPageBase
{
public:
    /// Makes the widget, filled with the stored values. The dialog owns it, and puts it where it
    /// belongs; `parent` lives as long as the widget.
    virtual QWidget* createPage(QWidget* parent) = 0;
    /// Stores what the widget shows.
    virtual void apply() = 0;
    /// The widget is about to be destroyed by the dialog: it is not to be used after this call.
    virtual void finish() = 0;
};

Q_DECLARE_INTERFACE(IOptionsPage, "com.oxa.vexdesk.Plugin.IOptionsPage/1.0")
