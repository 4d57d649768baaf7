// SPDX-License-Identifier: MIT
#include "zem/Reports/RptViewer.h"

#include "qip/Base/qipApplication.h"
#include "qip/Drawing/makeColorPixel.h"
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipAssert.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptArea.h"
#include "zem/Rows/RptRowLayout.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <X11/keysym.h>
#include <Xm/Xm.h>
#include <Xm/XmStrDefs.h>

#include <algorithm>
#include <climits>
#include <iostream>

namespace {

constexpr int FirstColumns = 100;
constexpr int FirstRows = 7;

// A single click runs select() once, on the press: the release belongs to the third line, which
// begins with a press and takes the events of the second.
constexpr char Translations[] = "<Btn1Down>:      select()     ManagerGadgetArm() \n"
                                "           <Btn1Up>:        select()     ManagerGadgetActivate() "
                                "\n"
                                "           <Btn1Up>(2+):    browse()     "
                                "ManagerGadgetButtonMotion()";

} // namespace

List<RptViewer::translationRecord*> RptViewer::_clients;

RptViewer::RptViewer(const char* name)
    : qipTCanvas(name), _covColor(0), _uncovColor(0), _selectionColor(0), _darkShadowColor(0),
      _lightShadowColor(0), _clicked(0), _selection(-1), _barHeight(0), _showPercentage(1),
      _longestLabel(0), _maxBlocks(0), _table(nullptr), _record{nullptr, nullptr}
{}

RptViewer::~RptViewer()
{
    _clients.remove(&_record);
}

void RptViewer::install(qipVCell* parent)
{
    requireFont("Fixed");
    _vPixels = 2 * _Ypxls;
    _barHeight = 5 * _Ypxls / 4;
    _hPixels = _Xpxls;
    resizeCanvas(FirstColumns, FirstRows);
    viewSize(FirstColumns, FirstRows);
    qipCanvas::install(parent);
    setTextColor("Black");
    allocateReportColors();
    installHelpHandler();
    installDefaultTranslations();
}

void RptViewer::helpRequested() const
{
    HelpWindow::showHelpOn("reports");
}

const char* RptViewer::className() const
{
    return "RptViewer";
}

void RptViewer::allocateReportColors()
{
    qipAssert(_clientArea != 0);
    _covColor = makeColorPixel(_clientArea, "SeaGreen4", 1);
    _uncovColor = makeColorPixel(_clientArea, "OrangeRed2", 0);
    _selectionColor = makeColorPixel(_clientArea, "LightSkyBlue3", 0);
    XtVaGetValues(_base, XmNtopShadowColor, &_lightShadowColor, XmNbottomShadowColor,
                  &_darkShadowColor, nullptr);
}

void RptViewer::installDefaultTranslations()
{
    static char selectName[] = "select";
    static char browseName[] = "browse";
    static XtActionsRec actions[] = {{selectName, click_cbk}, {browseName, dclick_cbk}};
    XtAppAddActions(theApplication->appContext(), actions, XtNumber(actions));
    XtTranslations table = XtParseTranslationTable(Translations);
    XtVaSetValues(_clientArea, XmNtranslations, table, nullptr);
    _record = {_clientArea, this};
    _clients.append(&_record);
}

void RptViewer::destroyed()
{
    // A later widget may have the same address.
    _clients.remove(&_record);
    qipTCanvas::destroyed();
}

// The keys that act on the selected row. Arrows, Home and End do with Control; without, they
// scroll.
bool RptViewer::rowKeyPressed(KeySym key, unsigned modifiers)
{
    const bool held = (modifiers & ControlMask) != 0;
    switch (key) {
    case osfXK_Up:
        return held && selectAndShow(_selection - 1);
    case osfXK_Down:
        return held && selectAndShow(_selection + 1);
    case osfXK_BeginLine:
    case osfXK_BeginData:
        return held && selectAndShow(0);
    case osfXK_EndLine:
    case osfXK_EndData:
        return held && selectAndShow(INT_MAX);
    case osfXK_Activate:
    case XK_Return:
    case XK_KP_Enter:
        _clicked = 1;
        browse();
        return true;
    default:
        return false;
    }
}

// Selects the row, or the nearest that there is, and scrolls to it.
bool RptViewer::selectAndShow(int row)
{
    const int nRows = _table == nullptr ? 0 : _table->_nItems;
    selection(std::max(std::min(row, nRows - 1), 0));
    if (_selection >= 0) {
        vertScroll(std::max(std::min(_view._y, _selection), _selection - _view._dy + 1));
    }
    render();
    return true;
}

void RptViewer::keyPressed(KeySym key, unsigned modifiers)
{
    if (rowKeyPressed(key, modifiers)) {
        return;
    }
    switch (key) {
    case osfXK_Help:
        helpRequested();
        break;
    case XK_ISO_Left_Tab: // what a keyboard may make of Shift and Tab
        XmProcessTraversal(_clientArea, XmTRAVERSE_PREV_TAB_GROUP);
        break;
    case XK_Tab:
        XmProcessTraversal(_clientArea, (modifiers & ShiftMask) != 0 ? XmTRAVERSE_PREV_TAB_GROUP
                                                                     : XmTRAVERSE_NEXT_TAB_GROUP);
        break;
    default:
        qipTCanvas::keyPressed(key, modifiers);
        break;
    }
}

void RptViewer::installView(ZEMRptTable* table)
{
    if (table == nullptr) {
        return;
    }
    _table = table;
    _maxBlocks = table->maxBlocks();
    _longestLabel = table->longestLabel();
    _selection = -1;
    const int columns =
        (_longestLabel + 2 * repWidth(static_cast<unsigned long>(_maxBlocks), 10)) * 2 + 20;
    resizeCanvas(columns, table->_nItems);
    render();
}

void RptViewer::forgetView()
{
    _table = nullptr;
    _selection = -1;
}

void RptViewer::selection(int row)
{
    _selection = _table != nullptr && row >= 0 && row < _table->_nItems ? row : -1;
}

void RptViewer::select(int y)
{
    if (_vPixels <= 0) {
        return; // not installed yet: a row has no height
    }
    _clicked = 1;
    // Above the canvas, with the pointer dragged out of the window, there is no row either.
    selection(y < 0 ? -1 : _view._y + y / _vPixels);
    render();
}

void RptViewer::browse()
{
    if (_clicked) {
        _clicked = 0;
        theReportContainer->browse();
    }
}

ZEMRecord* RptViewer::getSelection() const
{
    if (_selection < 0 || _table == nullptr || _selection >= _table->_nItems) {
        return nullptr;
    }
    return _table->_view[_selection]->_owner;
}

void RptViewer::refresh(Drawable drawable, qipView view)
{
    if (_table == nullptr || view._y >= _table->_nItems) {
        return;
    }
    XSetFont(XtDisplay(_clientArea), _gc, _font);
    RptRowLayout layout;
    layout._hPixels = _hPixels;
    layout._vPixels = _vPixels;
    layout._lineHeight = _Ypxls;
    layout._baseline = _baseline;
    layout._barHeight = _barHeight;
    layout._canvasWidth = _canvasWidth;
    layout._viewX = view._x;
    layout._viewDx = view._dx;
    layout._longestLabel = _longestLabel;
    layout._maxBlocks = _maxBlocks;
    layout._showPercentage = _showPercentage;
    // The bound is inclusive: a row of which only the top shows at the bottom is drawn too.
    for (int i = 0; view._y + i < _table->_nItems && i <= view._dy; ++i) {
        RptRow row;
        layout.layOut(*_table->_view[view._y + i], i, row);
        draw(drawable, row, _selection == view._y + i);
    }
}

void RptViewer::draw(Drawable drawable, const RptRow& row, bool selected)
{
    if (selected) {
        fill(drawable, row.selection, _selectionColor);
    }
    XSetForeground(XtDisplay(_clientArea), _gc, _textColor);
    draw(drawable, row.label);
    draw(drawable, row.counts);
    fill(drawable, row.covered, _covColor);
    fill(drawable, row.uncovered, _uncovColor);
    draw(drawable, row.light, row.nLight, _lightShadowColor);
    draw(drawable, row.dark, row.nDark, _darkShadowColor);
}

void RptViewer::draw(Drawable drawable, const RptTextRun& run)
{
    if (run.length > 0) {
        XDrawString(XtDisplay(_clientArea), drawable, _gc, run.x, run.y, run.text, run.length);
    }
}

void RptViewer::fill(Drawable drawable, const RptRect& rect, Pixel color)
{
    if (rect.width > 0 && rect.height > 0) {
        XSetForeground(XtDisplay(_clientArea), _gc, color);
        XFillRectangle(XtDisplay(_clientArea), drawable, _gc, rect.x, rect.y,
                       static_cast<unsigned>(rect.width), static_cast<unsigned>(rect.height));
    }
}

void RptViewer::draw(Drawable drawable, const RptLine* lines, int count, Pixel color)
{
    XSetForeground(XtDisplay(_clientArea), _gc, color);
    for (int i = 0; i < count; ++i) {
        XDrawLine(XtDisplay(_clientArea), drawable, _gc, lines[i].x0, lines[i].y0, lines[i].x1,
                  lines[i].y1);
    }
}

// Null, with a message, when no viewer has registered the widget.
RptViewer* RptViewer::viewerOf(Widget widget)
{
    ListIterator<translationRecord*> records(_clients);
    while (const translationRecord* record = records.next()) {
        if (record->_widget == widget) {
            return record->_viewer;
        }
    }
    // Both actions say click_cbk.
    std::cerr << " **** RptViewer::click_cbk() : unknown client!" << std::endl;
    return nullptr;
}

void RptViewer::click_cbk(Widget widget, XEvent* event, String*, Cardinal*)
{
    RptViewer* viewer = viewerOf(widget);
    if (viewer != nullptr && event != nullptr) {
        viewer->select(event->xbutton.y);
    }
}

void RptViewer::dclick_cbk(Widget widget, XEvent*, String*, Cardinal*)
{
    RptViewer* viewer = viewerOf(widget);
    if (viewer != nullptr) {
        viewer->browse();
    }
}
