// SPDX-License-Identifier: MIT
// A library without any of Qt's plug-in metadata.
extern "C" int deskTestPlainFunction();

int deskTestPlainFunction()
{
    return 1;
}
