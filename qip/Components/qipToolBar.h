// SPDX-License-Identifier: MIT
//
// A strip of button groups. Ordinary groups stand one after the other from the left edge, help
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
    // is added twice is installed once and listed twice, and stands where its last entry is.
    // REQUIRES: the tool bar is installed.
    void addGroup(qipVCell* group);
    void addHelpGroup(qipVCell* group);

    // Take the first entry of a group out of its list. When that was its only one, the group after
    // it takes its place, and its own widget stays as it is.
    void removeGroup(qipVCell* group);
    void removeHelpGroup(qipVCell* group);

private:
    // Attaches a group to the neighbour on the side of the edge; to the edge when that is null.
    using Attach = void (*)(qipVCell* group, qipVCell* neighbour);
    void add(List<qipVCell*>& groups, qipVCell* group, Attach attach);

    List<qipVCell*> _helpGroups;
    List<qipVCell*> _normalGroups;
};
