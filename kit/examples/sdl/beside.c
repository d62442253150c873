/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A window of the host's own beside the browser, with SDL 2: a bar for each row that the browser shows, also
   when the user chooses another node there. The keys 0 to 9 choose a node. Prints each new number of rows.
   Ends when its window is closed.

   beside SOM_DATABASE SOURCE_DATABASE TABLE
   The map has ten nodes at most: node 0 and its children. */

#include <qtutils/nodebrowser.h>

#include <SDL.h>

#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>

enum
{
    Nodes = 10,
    BarWidth = 12, /* pixels */
    Width = 480,
    Height = 120,
    Pace = 50 /* milliseconds between two questions */
};

static void check(int iError)
{
    if (iError == QTUTILS_OK)
        return;
    fprintf(stderr, "beside: %s %s\n", qtutils_error_text(iError), qtutils_error_detail());
    exit(1);
}

static qtutils_browser* open_browser(char** apcArguments)
{
    static const int aiChildren[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    qtutils_browser* pBrowser = NULL;
    check(qtutils_open(NULL, apcArguments[1], apcArguments[2], &pBrowser));
    check(qtutils_set_som_table(pBrowser, apcArguments[3]));
    for (int i = 0; i < Nodes; i++)
        check(qtutils_pass_node_hierarchy(pBrowser, aiChildren, i == 0 ? Nodes - 1 : 0, i, Nodes));
    check(qtutils_show(pBrowser));
    check(qtutils_select(pBrowser, 0));
    return pBrowser;
}

/* Carries out what the user did in the own window; false at the end. */
static bool handle_events(qtutils_browser* pBrowser)
{
    SDL_Event oEvent;
    bool bGoesOn = true;
    while (SDL_PollEvent(&oEvent)) {
        if (oEvent.type == SDL_QUIT)
            bGoesOn = false;
        if (oEvent.type == SDL_KEYDOWN && oEvent.key.keysym.sym >= SDLK_0 && oEvent.key.keysym.sym <= SDLK_9)
            check(qtutils_select(pBrowser, oEvent.key.keysym.sym - SDLK_0));
    }
    return bGoesOn;
}

static void draw(SDL_Window* pWindow, int iRows)
{
    SDL_Surface* pSurface = SDL_GetWindowSurface(pWindow);
    SDL_FillRect(pSurface, NULL, SDL_MapRGB(pSurface->format, 255, 255, 255));
    for (int i = 0; i < iRows && i < Width / BarWidth; i++) {
        const SDL_Rect oBar = {i * BarWidth + 1, 10, BarWidth - 2, Height - 20};
        SDL_FillRect(pSurface, &oBar, SDL_MapRGB(pSurface->format, 200, 0, 100));
    }
    SDL_UpdateWindowSurface(pWindow);
}

static void run(qtutils_browser* pBrowser, SDL_Window* pWindow)
{
    int iLast = -1;
    while (handle_events(pBrowser)) {
        int iRows = 0;
        check(qtutils_get_num_rows(pBrowser, &iRows));
        if (iRows != iLast)
            printf("%d rows\n", iRows);
        fflush(stdout);
        iLast = iRows;
        draw(pWindow, iRows);
        SDL_Delay(Pace);
    }
}

int main(int iArguments, char** apcArguments)
{
    if (iArguments != 4) {
        fprintf(stderr, "usage: beside SOM_DATABASE SOURCE_DATABASE TABLE\n");
        return 2;
    }
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"); /* bars need no graphics card */
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        fprintf(stderr, "beside: %s\n", SDL_GetError());
        return 1;
    }
    SDL_Window* pWindow = SDL_CreateWindow("Rows", 780, 40, Width, Height, SDL_WINDOW_SHOWN);
    if (pWindow == NULL) {
        fprintf(stderr, "beside: %s\n", SDL_GetError());
        return 1;
    }
    qtutils_browser* pBrowser = open_browser(apcArguments);
    run(pBrowser, pWindow);
    check(qtutils_close(pBrowser));
    SDL_DestroyWindow(pWindow);
    SDL_Quit();
    return 0;
}
