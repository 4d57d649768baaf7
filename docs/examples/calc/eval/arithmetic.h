// What the signs mean.
#pragma once

double apply(char sign, double left, double right);

// The same for whole numbers, as calculators with few digits do it.
long applyWhole(char sign, long left, long right);
