int besideScript = 3;
