// Read by the resource compiler too, so these are macros.
#pragma once

// Explorer shows the icon with the lowest number.
#define ODOMIRA_ICON 1

// The hand over the link of the About box.
#define ODOMIRA_HAND_CURSOR 103

// The picture of the About box: raw data of the type "GIF", 640 x 256 pixels for a place half as large at 96 dpi.
#define ODOMIRA_ABOUT_PICTURE 104
