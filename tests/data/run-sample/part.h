// What the sample does, each in a function of its own, so that a report says which ran.
#pragma once

int leaf();
int becomeLeaf(const char* program);
int waitForSignal(int sender);
int countApart();
int leaveBehind();
