<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>VornVPN</source>
        <translation>VornVPN</translation>
    </message>
    <message>
        <source>Quick Install</source>
        <translation>Быстрая установка</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>Принимаю</translation>
    </message>
    <message>
        <source>Vorn license agreement</source>
        <translation>условия лицензии Vorn</translation>
    </message>
    <message>
        <source>Custom path &gt;</source>
        <translation>Указать путь &gt;</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>Выберите папку</translation>
    </message>
    <message>
        <source>/opt/VornVPN</source>
        <translation>/opt/VornVPN</translation>
    </message>
    <message>
        <source>C:\Program Files\VornVPN</source>
        <translation>C:\Program Files\VornVPN</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Обзор</translation>
    </message>
    <message>
        <source>Start Up Automatically</source>
        <translation>Запускать автоматически</translation>
    </message>
    <message>
        <source>Create Shortcut</source>
        <translation>Создать ярлык</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>Установка...</translation>
    </message>
    <message>
        <source>One-click acceleration</source>
        <translation>Ускорение в один клик</translation>
    </message>
    <message>
        <source>simple</source>
        <translation>просто</translation>
    </message>
    <message>
        <source>easy to use</source>
        <translation>удобно</translation>
    </message>
    <message>
        <source>stable</source>
        <translation>стабильно</translation>
    </message>
    <message>
        <source>Smart cloud acceleration</source>
        <translation>Умное облачное ускорение</translation>
    </message>
    <message>
        <source>Low latency</source>
        <translation>низкая задержка</translation>
    </message>
    <message>
        <source>no freeze</source>
        <translation>без зависаний</translation>
    </message>
    <message>
        <source>Multi-platform, fully compatible</source>
        <translation>Все платформы, полная совместимость</translation>
    </message>
    <message>
        <source>New generation acceleration engine adapt to multi-platform network</source>
        <translation>Ускоритель нового поколения для сетей на любых платформах</translation>
    </message>
    <message>
        <source>Finish Installation</source>
        <translation>Установка завершена</translation>
    </message>
    <message>
        <source>Try It Now</source>
        <translation>Попробовать</translation>
    </message>
    <message>
        <source>Please wait...</source>
        <translation>Подождите…</translation>
    </message>
    <message>
        <source>The files are still being copied.</source>
        <translation>Файлы ещё копируются.</translation>
    </message>
    <message>
        <source>VornVPN could not be installed completely</source>
        <translation>Не удалось полностью установить VornVPN</translation>
    </message>
    <message>
        <source>Not available now</source>
        <translation>Сейчас недоступно</translation>
    </message>
    <message>
        <source>en</source>
        <translation>ru</translation>
    </message>
    <message>
        <source>“%1” could not be written to “%2”: %3.</source>
        <translation>Не удалось записать «%1» в «%2»: %3.</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>Не удалось создать «%1»: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>Не удалось прочитать «%1»: %2.</translation>
    </message>
    <message>
        <source>Not copied: %1 of %2 files.</source>
        <translation>Не скопировано файлов: %1 из %2.</translation>
    </message>
    <message>
        <source>no rights</source>
        <translation>нет прав</translation>
    </message>
    <message>
        <source>no room on the disk</source>
        <translation>нет места на диске</translation>
    </message>
    <message>
        <source>no such directory</source>
        <translation>нет такого каталога</translation>
    </message>
    <message>
        <source>something else has this name</source>
        <translation>это имя уже занято</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>диск доступен только для чтения</translation>
    </message>
    <message>
        <source>a link of somebody else has this name</source>
        <translation>это имя занято ссылкой другого пользователя</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>это не обычный файл</translation>
    </message>
    <message>
        <source>a name in it is no text</source>
        <translation>имя внутри не является текстом</translation>
    </message>
    <message>
        <source>unknown reason</source>
        <translation>причина неизвестна</translation>
    </message>
    <message>
        <source>The menu entry could not be created.</source>
        <translation>Не удалось создать пункт меню.</translation>
    </message>
    <message>
        <source>The automatic start could not be set up.</source>
        <translation>Не удалось настроить автозапуск.</translation>
    </message>
    <message>
        <source>Leads to “%1”.</source>
        <translation>Ведёт в «%1».</translation>
    </message>
    <message>
        <source>Needs administrator rights.</source>
        <translation>Нужны права администратора.</translation>
    </message>
    <message>
        <source>Nothing can be written there.</source>
        <translation>Запись туда невозможна.</translation>
    </message>
    <message>
        <source>Too little room: %1 MB needed, %2 MB free.</source>
        <translation>Мало места: нужно %1 МБ, свободно %2 МБ.</translation>
    </message>
    <message>
        <source>“%1” is not a directory.</source>
        <translation>«%1» не является каталогом.</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>«%1» не существует.</translation>
    </message>
    <message>
        <source>The installation found there will be updated.</source>
        <translation>Найденная там установка будет обновлена.</translation>
    </message>
    <message>
        <source>&lt; Return</source>
        <translation>&lt; Назад</translation>
    </message>
    <message>
        <source>Change path</source>
        <translation>Изменить путь</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Папка:</translation>
    </message>
    <message>
        <source>Enter some text...</source>
        <translation>Введите текст...</translation>
    </message>
    <message>
        <source>Low latency, no lag</source>
        <translation>Низкая задержка, без лагов</translation>
    </message>
    <message>
        <source>Simple,Easy,Stable</source>
        <translation>Просто, удобно, стабильно</translation>
    </message>
    <message>
        <source>New generation acceleration engine, adapt to multi-platform network</source>
        <translation>Ускоритель нового поколения для сетей на любых платформах</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Свернуть</translation>
    </message>
    <message>
        <source>Interface language</source>
        <translation>Язык интерфейса</translation>
    </message>
    <message>
        <source>Installation directory</source>
        <translation>Папка установки</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>Ход установки</translation>
    </message>
</context>
<context>
    <name>uninstall</name>
    <message>
        <source>Uninstall VornVPN</source>
        <translation>Удаление VornVPN</translation>
    </message>
    <message>
        <source>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</source>
        <translation>Будут удалены клиент, его пункт меню и запись автозапуска. Ваши собственные файлы в его папке сохранятся.</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Removing...</source>
        <translation>Удаление...</translation>
    </message>
    <message>
        <source>VornVPN has been removed</source>
        <translation>VornVPN удалён</translation>
    </message>
    <message>
        <source>VornVPN could not be removed completely</source>
        <translation>Не удалось полностью удалить VornVPN</translation>
    </message>
    <message>
        <source>These files do not belong to VornVPN and were kept:</source>
        <translation>Эти файлы не относятся к VornVPN и были сохранены:</translation>
    </message>
    <message>
        <source>These could not be removed:</source>
        <translation>Не удалось удалить:</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>Ход удаления</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>отсутствует</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>слишком большой</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>используется</translation>
    </message>
    <message>
        <source>leads out of the directory</source>
        <translation>ведёт за пределы каталога</translation>
    </message>
    <message>
        <source>Start the uninstaller again with administrator rights.</source>
        <translation>Запустите удаление ещё раз с правами администратора.</translation>
    </message>
    <message>
        <source>The window of the uninstaller could not be loaded.</source>
        <translation>Не удалось загрузить окно программы удаления.</translation>
    </message>
</context>
</TS>
