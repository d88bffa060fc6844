"""The main road on a desktop with a panel and a notification service: a person writes a settings
file, starts Quillmar, clicks the icon, chooses an item, and finds the output on the clipboard and in
a notification."""

import html
import os
import signal
import unittest

from quillmar_desktop import (SEPARATOR, DesktopTestCase, Notifications, Screen, StatusIcon,
                              clipboard_text, document, entry, folder, item, run, tools,
                              wait_until)

SHIFT, CONTROL, OPTION, COMMAND = 0x20000, 0x40000, 0x80000, 0x100000

FIXED_ENTRIES = (
    item("About Quillmar"),
    item("Settings...", "Super+comma"),
    SEPARATOR,
    item("Quit Quillmar", "Super+q"),
)


class StatusMenuTest(DesktopTestCase):

    def test_the_icon_is_registered_at_the_panel_and_opens_its_menu_on_a_left_click(self):
        _, icon = self.start_with_icon(document())
        properties = icon.properties()
        self.assertEqual(properties["Id"], "com.tovenworks.quillmar")
        self.assertEqual(properties["Category"], "ApplicationStatus")
        self.assertEqual(properties["Status"], "Active")
        self.assertTrue(properties["ItemIsMenu"])
        self.assertEqual(properties["Menu"], "/MenuBar")
        self.assertTrue(properties["IconName"])

    def test_an_empty_document_shows_the_fixed_entries_alone(self):
        _, icon = self.start_with_icon(document())
        self.assertEqual(icon.menu(), FIXED_ENTRIES)

    def test_the_menu_shows_every_kind_of_entry_in_the_order_of_the_document(self):
        _, icon = self.start_with_icon(document(
            {"name": "Last", "sortOrder": 50, "items": [entry("my_command_name")]},
            {"isSeparator": True, "sortOrder": 0},
            {"name": "Tools & <more>", "sortOrder": 10, "iconSymbolName": "folder.fill", "items": [
                {"isSeparator": True},
                entry("Plain"),
                entry("With a symbol", iconSymbolName="terminal"),
                entry("With an unknown symbol", iconSymbolName="no.such.symbol"),
                {"isSeparator": True},
                {"isSeparator": True},
                entry("Off", isEnabled=False),
                entry("Global key", shortcut={"keyCode": 2, "character": "d",
                                              "modifiers": CONTROL | OPTION}),
                entry("Local key", shortcut={"keyCode": 122, "character": "\uf704",
                                             "modifiers": SHIFT | COMMAND, "isGlobal": False}),
            ]},
            {"name": "All off", "sortOrder": 15, "items": [entry("Off", isEnabled=False)]},
            {"isSeparator": True, "sortOrder": 20},
            {"isSeparator": True, "sortOrder": 21},
            {"name": "At the top", "sortOrder": 30, "showAtTopLevel": True, "items": [
                entry("Top one"), entry("Top two")]},
            {"name": "Empty", "sortOrder": 40},
        ))
        self.assertEqual(icon.menu(), (
            folder("Tools & <more>",
                   SEPARATOR,
                   item("Plain"),
                   item("With a symbol", icon=True),
                   item("With an unknown symbol"),
                   SEPARATOR,
                   SEPARATOR,
                   item("Global key", "Alt+Control+d"),
                   item("Local key", "Shift+Super+F1"),
                   icon=True),
            SEPARATOR,
            item("Top one"),
            item("Top two"),
            SEPARATOR,
            folder("Last", item("my_command_name")),
            SEPARATOR,
        ) + FIXED_ENTRIES)

    def test_a_chosen_item_runs_its_command(self):
        _, icon = self.start_with_icon(tools(
            entry("Write", f"printf 'done, once\\n' >> {self.scratch}/result"),
            entry("Wrong", f"touch {self.scratch}/wrong")))
        icon.choose("Write")
        self.wait_for_file("result", "done, once\n")
        self.assertFalse((self.scratch / "wrong").exists())

    def test_an_item_of_a_folder_runs_its_command(self):
        _, icon = self.start_with_icon(document(
            {"name": "Deep", "items": [entry("Write", f"printf deep > {self.scratch}/result")]}))
        icon.choose("Deep", "Write")
        self.wait_for_file("result", "deep")

    def test_a_command_does_not_inherit_the_activation_token(self):
        program = self.start(
            tools(entry("Tell", "printf %s \"${DESKTOP_STARTUP_ID-none}"
                                f"${{XDG_ACTIVATION_TOKEN-none}}\" > {self.scratch}/result")),
            environment={"DESKTOP_STARTUP_ID": "old_TIME1", "XDG_ACTIVATION_TOKEN": "old"})
        StatusIcon(self.bus, program).choose("Tell")
        self.wait_for_file("result", "nonenone")

    def test_a_script_file_runs_in_its_own_folder(self):
        script = self.scratch / "where.sh"
        script.write_text("pwd > here\n")
        _, icon = self.start_with_icon(tools(entry("Where", str(script), type="Script File")))
        icon.choose("Where")
        self.wait_for_file("here", f"{self.scratch}\n")

    def test_a_foreground_item_runs_and_reports(self):
        notifications = Notifications()
        _, icon = self.start_with_icon(tools(
            entry("Front", "echo from the front", runInBackground=False, showNotification=True)))
        icon.choose("Front")
        self.assertEqual(notifications.wait_for("Front").body, "from the front")

    def test_other_programs_read_the_clipboard_as_often_as_they_like(self):
        program, icon = self.start_with_icon(tools(
            entry("Copy", "printf 'Grüße — 漢字 🙂\\nsecond line'", copyToClipboard=True)))
        icon.choose("Copy")
        expected = "Grüße — 漢字 🙂\nsecond line"
        wait_until(lambda: clipboard_text() == expected, "the output is on the clipboard")
        for _ in range(5):
            self.assertEqual(clipboard_text(), expected)
        self.assertEqual(run("xsel", "--clipboard", "--output", encoding="utf-8"), expected)
        self.assertTrue(program.is_running())

    def test_the_program_gives_the_clipboard_up_to_another_and_takes_it_back(self):
        _, icon = self.start_with_icon(tools(entry("Copy", "echo ours", copyToClipboard=True)))
        icon.choose("Copy")
        wait_until(lambda: clipboard_text() == "ours", "the output is on the clipboard")
        run("xsel", "--clipboard", "--input", input="theirs")
        wait_until(lambda: clipboard_text() == "theirs", "the other program's text is there")
        icon.choose("Copy")
        wait_until(lambda: clipboard_text() == "ours", "the output is on the clipboard again")

    def test_a_failed_command_leaves_the_clipboard_alone_and_says_so(self):
        notifications = Notifications()
        _, icon = self.start_with_icon(tools(
            entry("Copy", "echo good", copyToClipboard=True),
            entry("Break", "echo it broke; exit 3", copyToClipboard=True)))
        icon.choose("Copy")
        wait_until(lambda: clipboard_text() == "good", "the output is on the clipboard")
        icon.choose("Break")
        self.assertEqual(notifications.wait_for("Break failed").body, "it broke")
        self.assertEqual(clipboard_text(), "good")

    def test_a_silent_failure_is_reported_in_words(self):
        notifications = Notifications()
        _, icon = self.start_with_icon(tools(entry("Break", "exit 1")))
        icon.choose("Break")
        self.assertEqual(notifications.wait_for("Break failed").body,
                         "The command exited with an error.")

    def test_a_missing_script_is_named_in_the_notification(self):
        notifications = Notifications()
        _, icon = self.start_with_icon(tools(
            entry("Gone", "~/no/such/script.sh", type="Script File")))
        icon.choose("Gone")
        self.assertEqual(notifications.wait_for("Gone failed").body,
                         "Script file not found: ~/no/such/script.sh")

    def test_a_notification_shows_the_output_and_not_its_markup(self):
        text = "<b>bold</b> & \"quoted\" <a href='x'>"
        notifications = Notifications()
        _, icon = self.start_with_icon(tools(
            entry("Say <i> & co", f"cat <<'END'\n{text}\nEND", showNotification=True)))
        icon.choose("Say <i> & co")
        # The service takes the body, and only the body, for markup.
        body = notifications.wait_for("Say <i> & co").body
        self.assertNotIn("<", body)
        self.assertEqual(html.unescape(body), text)

    def test_a_successful_command_without_output_is_reported_in_words(self):
        notifications = Notifications()
        _, icon = self.start_with_icon(tools(entry("Quiet", "true", showNotification=True)))
        icon.choose("Quiet")
        self.assertEqual(notifications.wait_for("Quiet").body, "Command completed successfully")

    def test_two_hundred_commands_hang_and_the_next_one_still_runs(self):
        _, icon, _ = self.start_with_hanging_commands(200)
        icon.choose("Next")
        self.wait_for_file("next", "ran")

    def test_quitting_ends_at_once_and_hanging_commands_live_on(self):
        program, icon, commands = self.start_with_hanging_commands(20)
        icon.choose("Quit Quillmar")
        self.assertEqual(program.exit_status(), 0)
        for pid in commands:
            os.kill(pid, 0)  # fails for a process that has ended

    def start_with_hanging_commands(self, count):
        """Starts the program with that many commands that hang; answers their process ids too."""
        program, icon = self.start_with_icon(tools(
            entry("Hang", f"touch {self.scratch}/hangs.$$; exec sleep 100000"),
            entry("Next", f"printf ran > {self.scratch}/next")))
        for _ in range(count):
            icon.choose("Hang")

        def commands():
            return [int(path.suffix[1:]) for path in self.scratch.glob("hangs.*")]

        wait_until(lambda: len(commands()) == count, f"{count} commands hang")
        for pid in commands():
            self.addCleanup(os.kill, pid, signal.SIGKILL)
        return program, icon, commands()


class ScreenTest(DesktopTestCase):

    def test_a_person_finds_the_output_on_the_clipboard_and_in_a_notification(self):
        notifications = Notifications()
        screen = Screen()
        self.start_with_icon(tools(
            entry("Greet", "echo Good morning", copyToClipboard=True, showNotification=True)))
        menu = screen.open_menu()
        screen.click(menu.x + 40, menu.y + 16)
        self.assertEqual(notifications.wait_for("Greet").body, "Good morning")
        wait_until(lambda: clipboard_text() == "Good morning", "the output is on the clipboard")
        wait_until(lambda: not screen.menus(), "the menu has closed")

    def test_the_keyboard_chooses_an_entry_of_the_open_menu(self):
        screen = Screen()
        self.start_with_icon(tools(
            entry("First", f"touch {self.scratch}/first"),
            entry("Second", f"touch {self.scratch}/second")))
        menu = screen.open_menu()
        # The keys go to the menu once it answers to them by moving its highlight.
        before = screen.picture(menu)
        screen.press("End")
        wait_until(lambda: screen.picture(menu) != before, "the highlight has moved")
        screen.press("Home", "Down", "Return")
        self.wait_for_file("second")
        self.assertFalse((self.scratch / "first").exists())

    def test_the_icon_is_drawn_in_the_panel(self):
        screen = Screen()
        self.start_with_icon(tools(entry("First")))
        tray = screen.tray()
        wait_until(lambda: len(screen.colours(tray)) > 2,
                   "something is drawn on the panel's one colour")


class LifecycleTest(DesktopTestCase):

    def test_a_second_start_says_that_quillmar_is_already_running(self):
        first, _ = self.start_with_icon(document())
        second = self.start(document())
        self.assertEqual(second.exit_status(), 0)
        self.assertEqual(second.output().strip(), "Quillmar is already running.")
        self.assertTrue(first.is_running())

    def test_a_second_start_says_so_while_a_foreground_item_runs(self):
        first, _ = self.start_held_by_a_foreground_item()
        second = self.start(document())
        self.assertEqual(second.exit_status(), 0)
        self.assertEqual(second.output().strip(), "Quillmar is already running.")
        self.assertTrue(first.is_running())

    def test_without_a_session_bus_it_says_so_in_one_sentence(self):
        program = self.start(document(), environment=self.no_session_bus())
        self.assertEqual(program.exit_status(), 1)
        self.assertEqual(program.output(),
                         "There is no session bus, so Quillmar cannot start.\n")

    def test_with_a_session_bus_of_no_use_it_gives_the_reason_in_one_sentence(self):
        program = self.start(document(), environment={
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.scratch}/no-bus"})
        self.assertEqual(program.exit_status(), 1)
        self.assertEqual(program.output(),
                         "The session bus cannot be used (Could not connect: No such file or "
                         "directory), so Quillmar cannot start.\n")

    def no_session_bus(self):
        return {"DBUS_SESSION_BUS_ADDRESS": "", "XDG_RUNTIME_DIR": str(self.scratch)}

    def test_quit_quillmar_ends_the_program_with_status_0_and_removes_the_icon(self):
        program, icon = self.start_with_icon(document())
        icon.choose("Quit Quillmar")
        self.assertEqual(program.exit_status(), 0)
        wait_until(lambda: not self.bus.registered_items(), "the panel has forgotten the icon")

    def test_sigterm_ends_the_program_with_status_0(self):
        self.ends_cleanly_at(signal.SIGTERM)

    def test_sigint_ends_the_program_with_status_0(self):
        self.ends_cleanly_at(signal.SIGINT)

    def test_sigterm_ends_the_program_while_a_foreground_item_runs_and_its_command_lives_on(self):
        program, command = self.start_held_by_a_foreground_item()
        program.send(signal.SIGTERM)
        self.assertEqual(program.exit_status(), 0)
        os.kill(command, 0)  # fails for a process that has ended

    def start_held_by_a_foreground_item(self):
        """Starts the program and an item that runs for good; answers the command's process id too."""
        program, icon = self.start_with_icon(tools(
            entry("Hold", f"echo $$ > {self.scratch}/pid; mv {self.scratch}/pid {self.scratch}/held; "
                  "exec sleep 100000", runInBackground=False)))
        icon.choose("Hold")
        self.wait_for_file("held")
        command = int((self.scratch / "held").read_text())
        self.addCleanup(os.kill, command, signal.SIGKILL)
        return program, command

    def ends_cleanly_at(self, number):
        program, _ = self.start_with_icon(document())
        program.send(number)
        self.assertEqual(program.exit_status(), 0)

    def test_it_starts_again_after_it_was_killed(self):
        program, _ = self.start_with_icon(tools(entry("Before")))
        program.send(signal.SIGKILL)
        program.exit_status()
        _, icon = self.start_with_icon(tools(entry("After")))
        self.assertEqual(icon.menu()[0], item("After"))

    def test_a_broken_settings_file_is_told_and_gives_the_fixed_entries(self):
        program = self.start(settings="not a document")
        icon = StatusIcon(self.bus, program)
        self.assertEqual(icon.menu(), FIXED_ENTRIES)
        self.assertIn("Failed to load settings: ", program.output())


class RunFromTerminalTest(DesktopTestCase):

    SETTINGS = tools(entry("Greet", "echo Good evening", copyToClipboard=True,
                           showNotification=True))

    def test_the_instance_in_the_panel_gets_the_output_for_the_clipboard_and_a_notification(self):
        notifications = Notifications()
        program, _ = self.start_with_icon(self.SETTINGS)
        ran = program.run_item("Greet")
        self.assertEqual((ran.returncode, ran.stdout, ran.stderr), (0, "Good evening\n", ""))
        self.assertEqual(notifications.wait_for("Greet").body, "Good evening")
        wait_until(lambda: clipboard_text() == "Good evening", "the output is on the clipboard")

    def test_without_a_session_bus_one_sentence_tells_what_was_left_out(self):
        program, _ = self.start_with_icon(self.SETTINGS)
        ran = program.run_item("Greet", {"DBUS_SESSION_BUS_ADDRESS": "",
                                         "XDG_RUNTIME_DIR": str(self.scratch)})
        self.assertEqual((ran.returncode, ran.stdout), (0, "Good evening\n"))
        self.assertEqual(ran.stderr, "There is no session bus, so the output was not copied to the "
                         "clipboard and no notification was shown.\n")


if __name__ == "__main__":
    unittest.main()
