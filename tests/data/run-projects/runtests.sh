#!/bin/sh
# Runs both tests, each behind what LAUNCHER says.
set -e
for name in half third; do
    $LAUNCHER ./test_$name
done
