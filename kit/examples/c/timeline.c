/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* Shows a map with rows coloured by date: red for a node's first document, blue for its last one. Prints the
   number of documents of each node and the first one's date. Ends with standard input.

   timeline SOM_DATABASE SOURCE_DATABASE TABLE HIERARCHY
   HIERARCHY is a file with a line for each node: the numbers of its children. */

#include <qtutils/nodebrowser.h>

#include <stdio.h>
#include <stdlib.h>

enum
{
    DateSize = 20,
    LastHue = 240 /* blue */
};

static void check(int iError)
{
    if (iError == QTUTILS_OK)
        return;
    fprintf(stderr, "timeline: %s %s\n", qtutils_error_text(iError), qtutils_error_detail());
    exit(1);
}

/* The children of a node from its line, and how many they are. */
static int read_children(char* pcLine, int* piChildren, int iMost)
{
    int iNumber = 0;
    char* pcEnd = pcLine;
    for (long i = strtol(pcLine, &pcEnd, 10); pcEnd != pcLine && iNumber < iMost;
         i = strtol(pcLine, &pcEnd, 10)) {
        piChildren[iNumber++] = (int)i;
        pcLine = pcEnd;
    }
    return iNumber;
}

static int count_lines(FILE* pFile)
{
    int iLines = 0;
    for (int c = fgetc(pFile); c != EOF; c = fgetc(pFile))
        iLines += c == '\n';
    rewind(pFile);
    return iLines;
}

/* Returns the number of nodes. */
static int pass_hierarchy(qtutils_browser* pBrowser, const char* pcFile)
{
    FILE* pFile = fopen(pcFile, "r");
    if (pFile == NULL) {
        fprintf(stderr, "timeline: can't read %s\n", pcFile);
        exit(1);
    }
    char* pcLine = NULL;
    size_t uSize = 0;
    const int iNodes = count_lines(pFile);
    int* piChildren = calloc((size_t)iNodes + 1, sizeof *piChildren);
    for (int i = 0; i < iNodes && getline(&pcLine, &uSize, pFile) >= 0; i++)
        check(qtutils_pass_node_hierarchy(
            pBrowser, piChildren, read_children(pcLine, piChildren, iNodes), i, iNodes));
    free(piChildren);
    free(pcLine);
    fclose(pFile);
    return iNodes;
}

/* A qtutils_color_callback. */
static int color_by_date(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    (void)pUser;
    long lFirst = INT_MAX;
    long lLast = INT_MIN;
    for (int i = 0; i < iNumRows; i++)
        if (piMinutes[i] != QTUTILS_NO_DATE) {
            lFirst = piMinutes[i] < lFirst ? piMinutes[i] : lFirst;
            lLast = piMinutes[i] > lLast ? piMinutes[i] : lLast;
        }
    for (int i = 0; i < iNumRows; i++)
        if (piMinutes[i] != QTUTILS_NO_DATE) {
            pfColors[3 * i] =
                lLast > lFirst ? (float)(LastHue * (piMinutes[i] - lFirst) / (lLast - lFirst)) : 0;
            pfColors[3 * i + 1] = 90;
        }
    return 0;
}

static void show_node(qtutils_browser* pBrowser, int iNode)
{
    char acDate[DateSize];
    int iRows = 0;
    check(qtutils_select_colored(pBrowser, iNode, color_by_date, NULL));
    check(qtutils_get_num_rows(pBrowser, &iRows));
    if (iRows == 0) {
        printf("node %d: no documents\n", iNode);
        return;
    }
    check(qtutils_get_first_date_in_selection(pBrowser, acDate, sizeof acDate));
    printf("node %d: %d documents from %s\n", iNode, iRows, acDate);
}

int main(int iArguments, char** apcArguments)
{
    qtutils_browser* pBrowser = NULL;
    if (iArguments != 5) {
        fprintf(stderr, "usage: timeline SOM_DATABASE SOURCE_DATABASE TABLE HIERARCHY\n");
        return 2;
    }
    check(qtutils_open(NULL, apcArguments[1], apcArguments[2], &pBrowser));
    check(qtutils_set_som_table(pBrowser, apcArguments[3]));
    const int iNodes = pass_hierarchy(pBrowser, apcArguments[4]);
    check(qtutils_show(pBrowser));
    for (int i = iNodes - 1; i >= 0; i--)
        show_node(pBrowser, i);
    printf("the map is shown until standard input ends\n");
    fflush(stdout);
    while (getchar() != EOF)
        continue;
    check(qtutils_close(pBrowser));
    return 0;
}
