# gadgets: nothing built yet.
