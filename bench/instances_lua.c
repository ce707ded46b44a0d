/* instances_lua COUNT: create a Lua state with its libraries and close it, COUNT times. */

#include <lauxlib.h>
#include <lua.h>
#include <lualib.h>
#include <stdlib.h>

int main(int argc, char **argv) {
    for (int i = argc == 2 ? atoi(argv[1]) : 0; i > 0; i--) {
        lua_State *L = luaL_newstate();
        if (!L)
            return 1;
        luaL_openlibs(L);
        lua_close(L);
    }
    return 0;
}
