/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include <qtutils/nodebrowser.h>
#include <stdio.h>

/* Prints the code of an opening with the module that is named. */
int main(int iArguments, char** ppcArguments)
{
    qtutils_browser* pBrowser = NULL;
    if (iArguments != 2) {
        return 2;
    }
    printf("%d\n", qtutils_open(ppcArguments[1], "som", "texts", &pBrowser));
    return qtutils_close(pBrowser);
}
