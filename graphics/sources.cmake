# graphics: nothing built yet.
