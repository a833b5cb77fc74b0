#pragma once

// The app's own symbols, drawn from bundled SVG files and tinted when shown.
enum class Symbol {
    DriveCheck,      // external drive with a check badge (the app's mark)
    Folder,          // filled folder
    MinusCircle,     // minus in a circle (remove)
    XMark,           // x mark (dismiss)
    ArrowDownCircle, // arrow down in a filled circle (update)
    CheckCircle,     // check in a filled circle (latest)
    WarningTriangle, // exclamation mark in a filled triangle
    Clock,           // filled clock (checking)
};
