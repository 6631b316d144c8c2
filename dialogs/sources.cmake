# dialogs: nothing built yet.
