#pragma once

int half(int n);
int third(int n);
