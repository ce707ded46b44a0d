static int own = 30;
int ownOfImport() { return own; }
