// SPDX-License-Identifier: MIT
//
// Draws a report table: one row for each of its rows, with the label, a bar of covered and
// uncovered blocks, and the numbers. A click selects a row, a double click opens its source through
// the report area. From the keyboard, Control with the arrows, Home and End selects, and Return
// opens.
#pragma once

#include "qip/Components/qipTCanvas.h"
#include "qip/Support/List.h"

class RptRowLayout;
class ZEMRecord;
class ZEMRptTable;
class ZEMView;
struct RptLine;
struct RptRect;
struct RptRow;
struct RptTextRun;

class RptViewer : public qipTCanvas
{
public:
    explicit RptViewer(const char* name);
    ~RptViewer() override;

    void install(qipVCell* parent) override;
    const char* className() const override;

    // Shows the topic "reports".
    void helpRequested() const override;

    // Shows `table`, borrowed until the next call; null is ignored. Nothing is selected then.
    void installView(ZEMRptTable* table);

    // Forgets the table, whose rows are about to be freed.
    void forgetView();

    // The selected row, from 0, or -1. A row that the table does not have is -1. The setter does
    // not draw.
    int selection() const { return _selection; }
    void selection(int row);

    // Selects the row at `y` pixels from the top of the canvas and draws; below the last row
    // nothing is selected. Does nothing before install().
    void select(int y);

    // Opens the source of the selected row, once for each select.
    void browse();

    // The record of the selected row; null without a selection and for a row without one.
    ZEMRecord* getSelection() const;

    // All bars have the same length; else they are in proportion to the blocks.
    void showPercentage(int show) { _showPercentage = show; }

protected:
    void refresh(Drawable drawable, qipView view) override;
    void destroyed() override;

    // The canvas has translations of its own, which leave out those of the help key and of the keys
    // that take the keyboard to another component.
    void keyPressed(KeySym key, unsigned modifiers) override;

private:
    struct translationRecord
    {
        Widget _widget;
        RptViewer* _viewer;
    };

    bool rowKeyPressed(KeySym key, unsigned modifiers);
    bool selectAndShow(int row);
    void allocateReportColors();
    void installDefaultTranslations();
    void draw(Drawable drawable, const RptRow& row, bool selected);
    void draw(Drawable drawable, const RptTextRun& run);
    void fill(Drawable drawable, const RptRect& rect, Pixel color);
    void draw(Drawable drawable, const RptLine* lines, int count, Pixel color);

    static RptViewer* viewerOf(Widget widget);
    static void click_cbk(Widget widget, XEvent* event, String* params, Cardinal* nParams);
    static void dclick_cbk(Widget widget, XEvent* event, String* params, Cardinal* nParams);

    Pixel _covColor;
    Pixel _uncovColor;
    Pixel _selectionColor;
    Pixel _darkShadowColor;
    Pixel _lightShadowColor;
    int _clicked; // a select has happened since the last browse
    int _selection;
    int _barHeight; // pixels
    int _showPercentage;
    int _longestLabel; // of the table, in characters
    int _maxBlocks;    // of the table
    ZEMRptTable* _table;

    translationRecord _record; // this viewer's entry in `_clients`

    // Which viewer an action is for. The records are the viewers' own.
    static List<translationRecord*> _clients;
};
