# Which tests see what a room does.

# Executables, or one class of them; those of the room first.
TESTS_OF_ROOMS = {
    "app": ["app_tests", "tst_startedprogram", "tst_instances"],
    "board": ["board_tests", "home_tests:tst_arrivingboards", "home_tests:tst_openboard"],
    "history": ["history_tests", "board_tests"],
    "home": ["home_tests", "board_tests:tst_longwork"],
    "items": ["items_tests", "history_tests", "board_tests"],
    "look": ["home_tests", "board_tests"],
    "painting": ["painting_tests", "board_tests"],
    "storage": ["storage_tests", "board_tests"],
}
# What looks at every pixel again and again takes longer than all other tests; so it is left to the room
# whose work it is about, and what runs at several scales to the rooms that know of them.
PIXEL_TESTS = ("tst_canvaspainting",)
ROOMS_OF_PIXELS = {"painting"}
ROOMS_OF_SCALES = {"look", "painting"}


def concerns(test, room):
    """Whether the test is one of those of the room."""
    names = {entry.partition(":")[2] for entry in TESTS_OF_ROOMS[room]
             if entry.partition(":")[0] == test.target}
    return (("" in names or test.test in names)
            and (room in ROOMS_OF_SCALES or not test.is_scaled())
            and (room in ROOMS_OF_PIXELS or not is_of_pixels(test.test)))


def place_for(test, room):
    """The place of the test's executable among those of the room, from 0 on."""
    return next(place for place, entry in enumerate(TESTS_OF_ROOMS[room])
                if entry.partition(":")[0] == test.target)


def is_of_pixels(name):
    return name.startswith(PIXEL_TESTS)


def targets():
    return sorted({entry.partition(":")[0] for entries in TESTS_OF_ROOMS.values() for entry in entries})
