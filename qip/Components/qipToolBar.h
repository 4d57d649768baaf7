// SPDX-License-Identifier: MIT
//
// A strip of button groups. Ordinary groups stand one behind the other from the left edge, help
// groups from the right edge, the first one outermost.
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Support/List.h"

class qipToolBar : public qipVCell
{
public:
    explicit qipToolBar(const char* name);
    qipToolBar(const qipToolBar&) = delete;
    qipToolBar& operator=(const qipToolBar&) = delete;
    ~qipToolBar() override;

    void install(qipVCell* parent) override;
    const char* className() const override;

    // Add a group, borrowed, installing one that has no widget yet; null is ignored. A group that
    // is added twice is installed once and listed twice. REQUIRES: the tool bar is installed.
    void addGroup(qipVCell* group);
    void addHelpGroup(qipVCell* group);

    // Take one entry of a group out of its list. The group that stood behind it takes its place;
    // its own widget stays as it is.
    void removeGroup(qipVCell* group);
    void removeHelpGroup(qipVCell* group);

private:
    List<qipVCell*> _helpGroups;
    List<qipVCell*> _normalGroups;
};
