#!/usr/bin/python3
"""The support console in a real browser: Debian's headless Chromium, driven by Selenium, against
the built agentsim. Saves a screenshot of the page in the artefacts folder.

usage: console_test.py --agentsim PATH --artifacts DIR [unittest arguments]
"""

import argparse
import os
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

from selenium import webdriver
from selenium.common.exceptions import WebDriverException
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select, WebDriverWait

AGENTSIM = None
ARTIFACTS = None

CHROMIUM_FLAGS = [
    "--headless",
    "--no-sandbox",
    "--disable-gpu",
    "--disable-quic",
    "--no-first-run",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
    "--window-size=1600,1300",
]
PATIENCE = 30  # seconds a condition may take before the test fails
PICTURE_TOOL = "7A31B2_LIVE_SUPPORT_PICTURE_DIAGNOSE_TOOL"
DOWNLOAD_COMMAND = "FFFFFF_LIVE_SUPPORT_GET_DEVICE_CONFIG"
PICTURE_ACTION = "marlo.sl2.action.video.set.picture.adjustment"

# A coarse picture of the canvas: the sum of each cell of a 16 x 9 grid, per colour channel.
CANVAS_CELLS = """
const canvas = document.getElementById('screen');
const data = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height).data;
const columns = 16, rows = 9, sums = new Array(columns * rows).fill(0);
const cellWidth = canvas.width / columns, cellHeight = canvas.height / rows;
for (let y = 0; y < canvas.height; y += 4) {
  for (let x = 0; x < canvas.width; x += 4) {
    const i = (y * canvas.width + x) * 4;
    const cell = Math.floor(y / cellHeight) * columns + Math.floor(x / cellWidth);
    sums[cell] += data[i] * 3 + data[i + 1] * 5 + data[i + 2] * 7;
  }
}
return sums;
"""


class ConsoleProcess:
    """agentsim's console on a free port, stopped with Ctrl-C (SIGINT)."""

    def __init__(self, *options):
        self.process = subprocess.Popen(
            [AGENTSIM, *options, "console", "--port", "0"],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.url = None
        self.output = ""
        deadline = time.monotonic() + PATIENCE
        while self.url is None and time.monotonic() < deadline:
            ready, _, _ = select.select([self.process.stdout], [], [], 1)
            if ready:
                line = self.process.stdout.readline()
                if not line:
                    break
                self.output += line
                found = re.search(r"(http://\S+/\?token=[0-9a-f]{32})", line)
                if found:
                    self.url = found.group(1)
        if self.url is None:
            self.process.kill()
            raise RuntimeError(f"agentsim console printed no address: {self.output}")
        self.origin = self.url.split("/?")[0]

    def stop(self):
        self.process.send_signal(signal.SIGINT)
        out, err = self.process.communicate(timeout=PATIENCE)
        return self.process.returncode, self.output + out, err


def start_browser(profile, downloads):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for flag in CHROMIUM_FLAGS + [f"--user-data-dir={profile}"]:
        options.add_argument(flag)
    options.add_experimental_option("prefs", {
        "download.default_directory": downloads,
        "download.prompt_for_download": False,
    })
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    driver.execute_cdp_cmd("Browser.setDownloadBehavior",
                           {"behavior": "allow", "downloadPath": downloads})
    return driver


class ConsoleInTheBrowser(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.mkdtemp(prefix="norvane-browser-")
        cls.downloads = os.path.join(cls.scratch, "downloads")
        os.makedirs(cls.downloads)
        # Simulated time runs 10 times faster: the plug-in's 3-second session polls take 0.3 s.
        cls.console = ConsoleProcess("--time-scale", "10")
        try:
            cls.driver = start_browser(os.path.join(cls.scratch, "profile"), cls.downloads)
        except WebDriverException:
            cls.console.stop()
            raise

    @classmethod
    def tearDownClass(cls):
        try:
            cls.driver.quit()
        finally:
            status, out, err = cls.console.stop()
            shutil.rmtree(cls.scratch, ignore_errors=True)
        if status != 0 or "agentsim console: stopped" not in out:
            raise AssertionError(f"the console did not stop cleanly ({status}): {out}{err}")

    def setUp(self):
        self.driver.switch_to.window(self.driver.window_handles[0])
        self.open_page()

    # --- helpers ---

    def open_page(self):
        self.driver.get(self.console.url)
        self.wait_for(lambda d: d.execute_script("return document.body.dataset.ready === 'true'"),
                      "the page to load its catalogue")
        self.assertEqual(self.driver.current_url, self.console.origin + "/",
                         "the token leaves the address bar once the cookie holds it")

    def wait_for(self, condition, what):
        return WebDriverWait(self.driver, PATIENCE, poll_frequency=0.05).until(
            condition, message=f"waited {PATIENCE} s for {what}")

    def css(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def feed_has(self, text):
        return self.driver.execute_script(
            "return [...document.querySelectorAll('#feed li')].some(li => li.textContent.includes(arguments[0]))",
            text)

    def frames_shown(self):
        return int(self.css("#screen").get_attribute("data-frames") or 0)

    def wait_for_frames(self, count):
        start = self.frames_shown()
        self.wait_for(lambda d: self.frames_shown() >= start + count, f"{count} more frames")

    def open_command(self, command_id):
        self.css(f"button[data-command='{command_id}']").click()
        self.wait_for(lambda d: d.find_elements(By.ID, "execute"), f"the form of {command_id}")

    def execute_and_wait(self):
        self.css("#execute").click()
        return self.wait_for(lambda d: d.find_elements(By.CSS_SELECTOR, ".result:not([hidden]) [data-result]"),
                             "the command's result")[0]

    def press(self, button):
        self.css(f"#remote button[data-button='{button}']").click()
        self.wait_for(lambda d: self.css("#remote-status").text.startswith(f"{button} → result"),
                      f"the {button} press")

    # --- tests ---

    def test_page_loads_with_every_command_a_remote_and_frames(self):
        commands = self.driver.find_elements(By.CSS_SELECTOR, "#catalogue button[data-command]")
        self.assertEqual(len(commands), 18)
        self.assertEqual(self.css("#command-count").text, "18 commands")
        headings = [h.text for h in self.driver.find_elements(By.CSS_SELECTOR, "#catalogue h3")]
        self.assertEqual(headings, ["INSPECTIONS", "TOOLS", "WITHOUT A CATEGORY"])
        for button in ["MENU", "ENTER", "UP", "NUM0", "NUM9", "VOL_UP", "CHANNEL_DOWN", "RED", "POWER", "KEY_MEIDA"]:
            self.assertTrue(self.driver.find_elements(By.CSS_SELECTOR, f"#remote button[data-button='{button}']"),
                            button)
        self.assertEqual(len(self.driver.find_elements(By.CSS_SELECTOR, "#remote button[data-button]")), 102)
        self.wait_for_frames(3)
        self.assertEqual(self.css("#stat-size").text, "1920 × 1080")
        self.wait_for(lambda d: self.css("#connection").text == "live", "the feed to be live")
        self.assertIn("/3rd/ULI/lib/", self.css("#device").text)

    def test_picture_mode_set_in_the_form_reaches_the_tv_and_reads_back(self):
        self.open_command(PICTURE_TOOL)
        self.wait_for(lambda d: "current values read" in self.css("#command-view [role=status]").text,
                      "the form to be prefilled from getHandler")
        mode = Select(self.css("select[data-input='PICTURE_MODE']"))
        self.assertEqual(mode.first_selected_option.text, "Standard")
        choice = next(option.text for option in mode.options if option.text not in ("Standard",))
        mode.select_by_visible_text(choice)
        self.assertEqual(self.execute_and_wait().get_attribute("data-result"), "0")
        self.wait_for(lambda d: self.feed_has(PICTURE_ACTION), "the TV journal in the feed")

        self.open_command("7A31B2_LIVE_SUPPORT_PQ_AQ_RESET")
        self.open_command(PICTURE_TOOL)
        self.wait_for(lambda d: "current values read" in self.css("#command-view [role=status]").text,
                      "the form to read the values again")
        self.assertEqual(Select(self.css("select[data-input='PICTURE_MODE']")).first_selected_option.text,
                         choice)
        # Read-only and required inputs say so; numbers carry their bounds.
        source = self.css("[data-field='SOURCE_INPUT']")
        self.assertIn("read-only", source.text)
        self.assertIn("required", source.text)
        saturation = self.css("input[data-input='COLOUR_SATURATION']")
        self.assertEqual((saturation.get_attribute("min"), saturation.get_attribute("max")), ("0", "100"))

    def still_screen(self):
        """The canvas once it has stayed the same for five frames: earlier presses' banners gone."""
        seen = {"cells": None, "frame": 0}

        def unchanged_for_a_while(driver):
            cells = driver.execute_script(CANVAS_CELLS)
            if cells != seen["cells"]:
                seen.update(cells=cells, frame=self.frames_shown())
                return False
            return self.frames_shown() >= seen["frame"] + 5 and cells

        return self.wait_for(unchanged_for_a_while, "a still screen")

    def test_menu_on_the_remote_shows_the_tvs_menu_on_the_live_screen(self):
        before = self.still_screen()
        self.press("MENU")
        changed = self.wait_for(
            lambda d: [i for i, (a, b) in enumerate(zip(before, d.execute_script(CANVAS_CELLS))) if a != b],
            "the menu on the live screen")
        # The TV draws its menu as a panel on the left: from x 80 to 880 and y 100 down, on a
        # 1080-line screen, that is the cells of the left half of the 16 x 9 grid.
        cells = {(i % 16, i // 16) for i in changed}
        self.assertIn((1, 1), cells, "the menu's title")
        self.assertTrue(all(column <= 7 for column, _ in cells), f"changes outside the menu: {sorted(cells)}")
        self.press("EXIT")
        self.wait_for(lambda d: d.execute_script(CANVAS_CELLS) == before, "the menu to close")

    def test_keyboard_on_the_screen_presses_remote_buttons(self):
        canvas = self.css("#screen")
        canvas.click()
        canvas.send_keys(Keys.ARROW_DOWN)
        self.wait_for(lambda d: self.css("#remote-status").text == "DOWN → result 0", "DOWN from the keyboard")
        canvas.send_keys("7")
        self.wait_for(lambda d: self.css("#remote-status").text == "NUM7 → result 0", "NUM7 from the keyboard")
        canvas.send_keys(Keys.ESCAPE)
        self.wait_for(lambda d: self.css("#remote-status").text == "EXIT → result 0", "EXIT from the keyboard")

    def test_session_flow_from_the_tv_menu_to_a_connected_engineer(self):
        self.css("#support-on").click()
        self.wait_for(lambda d: self.css("#support-on").get_attribute("aria-pressed") == "true",
                      "remote support on")
        self.css("#get-code").click()
        self.wait_for(lambda d: re.fullmatch(r"\d{6}", self.css("#tv-code").text), "the session code")
        self.assertEqual(self.css("#tv-code").text, "123456")
        self.assertEqual(self.css("#host-code").text, "123456")
        connect = self.css("#engineer-connect")
        self.wait_for(lambda d: connect.is_enabled(), "the engineer's connect button")
        connect.click()
        self.wait_for(lambda d: self.css("#tv-notice").text == "Last notice to the TV: An engineer is connected to this TV.",
                      "the connected notice on the TV panel")
        self.wait_for(lambda d: self.feed_has("(the TV shows: an engineer is connected)"),
                      "the connect notice in the feed")
        self.assertIn("engineer connected", self.css("#host-state").text)

        self.css("#engineer-disconnect").click()
        self.wait_for(lambda d: self.feed_has("(the TV shows: the session has ended)"), "the disconnect")
        self.css("#support-off").click()
        self.wait_for(lambda d: self.css("#support-off").get_attribute("aria-pressed") == "true",
                      "remote support off")

    def test_log_download_gives_a_file(self):
        self.open_command(DOWNLOAD_COMMAND)
        Select(self.css("select[data-input='DOWNLOAD_FILE_TYPE']")).select_by_visible_text("Log0")
        self.assertEqual(self.execute_and_wait().get_attribute("data-result"), "0")
        save = self.css(".file a.save")
        name = save.get_attribute("download")
        size = int(self.css(".file [data-size]").get_attribute("data-size"))
        self.assertEqual(name, "log0.txt")
        self.assertGreater(size, 0)
        save.click()
        path = os.path.join(self.downloads, name)
        self.wait_for(lambda d: os.path.exists(path) and os.path.getsize(path) == size,
                      f"{name} in the downloads")

    def test_two_tabs_both_work(self):
        first = self.driver.current_window_handle
        self.driver.switch_to.new_window("tab")
        self.open_page()
        self.wait_for_frames(2)
        self.press("INFO")
        self.driver.switch_to.window(first)
        self.wait_for(lambda d: self.feed_has("Remote button: INFO pressed."), "the other tab's press in this feed")
        self.wait_for_frames(2)
        self.driver.switch_to.new_window("tab")
        self.driver.close()
        self.driver.switch_to.window(first)

    def test_zz_screenshot_of_the_page(self):
        """Runs last: the page after the other tests, whole, saved as an artefact."""
        self.open_command(PICTURE_TOOL)
        self.wait_for(lambda d: "current values read" in self.css("#command-view [role=status]").text, "the form")
        self.execute_and_wait()
        # The TV's menu on the live screen, as the engineer sees it after pressing MENU.
        before = self.still_screen()
        self.press("MENU")
        self.wait_for(lambda d: d.execute_script(CANVAS_CELLS) != before, "the menu on the live screen")
        height = self.driver.execute_script("return document.documentElement.scrollHeight")
        self.driver.set_window_size(1600, height + 120)
        self.driver.execute_script("window.scrollTo(0, 0)")
        self.wait_for_frames(1)
        os.makedirs(ARTIFACTS, exist_ok=True)
        path = os.path.join(ARTIFACTS, "console.png")
        self.assertTrue(self.driver.save_screenshot(path))
        print(f"screenshot: {path}", file=sys.stderr)
        self.driver.set_window_size(1600, 1300)
        self.press("EXIT")


def main():
    global AGENTSIM, ARTIFACTS
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--agentsim", required=True)
    parser.add_argument("--artifacts", required=True)
    arguments, rest = parser.parse_known_args()
    AGENTSIM = arguments.agentsim
    ARTIFACTS = arguments.artifacts
    unittest.main(argv=[sys.argv[0], "-v", *rest])


if __name__ == "__main__":
    main()
