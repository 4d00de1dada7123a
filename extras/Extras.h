#pragma once

/// Makes the commands and screens of the menu Extras known: what an engineer needs beside the roads.
void registerExtras();
