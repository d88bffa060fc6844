"""What a test needs to use the menu that the program shows itself, without a panel's help."""

from quillmar_desktop import DesktopTestCase, Screen, entry, tools, wait_until
from x_windows import XWindows

ROW_HEIGHT = 20
SMOOTH_TEXT_COLOURS = 8


class PopUpTestCase(DesktopTestCase):

    def setUp(self):
        super().setUp()
        self.screen = Screen()

    def start_with_two_items(self):
        """Starts the program with a menu that begins with the items "First" and "Second", which
        make the files "first" and "second"."""
        self.start_with(entry("First", f"touch '{self.scratch}/first'"),
                        entry("Second", f"touch '{self.scratch}/second'"))

    def start_with(self, *items):
        """Starts the program with a menu that begins with the items."""
        self.program = self.start_on_bus(tools(*items))
        self.x_windows = XWindows(self.program.process.pid)

    def open_menu(self):
        """The menu, once it is drawn: from then on it has the keyboard."""
        menu = wait_until(self.x_windows.menus, "the menu is on the screen")[0]
        wait_until(lambda: len(self.screen.colours(menu)) > SMOOTH_TEXT_COLOURS,
                   "the menu is drawn")
        return menu

    def choose_second(self, menu):
        """Chooses the second item with the keyboard."""
        self.highlight_last(menu)
        self.screen.press("Down", "Down", "Return")

    def highlight_last(self, menu):
        """Moves the highlight to the end of the menu with the keyboard."""
        last = menu._replace(y=menu.y + menu.height - ROW_HEIGHT, height=ROW_HEIGHT)
        before = self.screen.picture(last)
        self.screen.press("Up")
        wait_until(lambda: self.screen.picture(last) != before, "the highlight has moved")

    def choose_first(self, menu):
        """Chooses the first item with the mouse."""
        self.screen.click(menu.x + 40, menu.y + ROW_HEIGHT // 2)

    def wait_until_closed(self):
        wait_until(lambda: not self.x_windows.menus(), "the menu has closed")

    def made(self, name):
        return (self.scratch / name).exists()
