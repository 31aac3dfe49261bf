<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>BuildingReader</name>
    <message>
        <source>the extent is empty</source>
        <translation>范围为空</translation>
    </message>
    <message>
        <source>expected 1 to 1000 elements</source>
        <translation>应有 1 至 1000 个构件</translation>
    </message>
    <message>
        <source>an element has no id</source>
        <translation>有构件缺少 id</translation>
    </message>
    <message>
        <source>the id &quot;%1&quot; occurs twice</source>
        <translation>id “%1” 出现了两次</translation>
    </message>
    <message>
        <source>expected a material or two colours</source>
        <translation>应给出材质或两种颜色</translation>
    </message>
    <message>
        <source>expected at most 500 solids</source>
        <translation>最多可有 500 个实体</translation>
    </message>
    <message>
        <source>a solid&apos;s front is not in front of its back</source>
        <translation>实体的前面不在其后面之前</translation>
    </message>
    <message>
        <source>expected 1 to 500 shapes</source>
        <translation>应有 1 至 500 个图形</translation>
    </message>
    <message>
        <source>the shapes have too many points</source>
        <translation>形状的点太多</translation>
    </message>
    <message>
        <source>expected 1 to 500 repeats</source>
        <translation>重复次数应为 1 至 500</translation>
    </message>
    <message>
        <source>a polygon needs 3 to 2000 points</source>
        <translation>多边形应有 3 至 2000 个点</translation>
    </message>
    <message>
        <source>expected %1 numbers up to 1000</source>
        <translation>应有 %1 个不大于 1000 的数</translation>
    </message>
    <message>
        <source>a name is missing</source>
        <translation>缺少名称</translation>
    </message>
</context>
<context>
    <name>CloudAccountDialog</name>
    <message>
        <source>Cloud account</source>
        <translation>云端账号</translation>
    </message>
    <message>
        <source>WebDAV server</source>
        <translation>WebDAV 服务器</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Sign out</source>
        <translation>退出登录</translation>
    </message>
    <message>
        <source>Without a server the favourites are kept in a folder of this machine.</source>
        <translation>不填服务器时，收藏保存在本机的文件夹中。</translation>
    </message>
    <message>
        <source>This address is not encrypted: others can read what is sent.</source>
        <translation>该地址未加密：传输内容可能被他人读取。</translation>
    </message>
    <message>
        <source>The password is kept until the program ends.</source>
        <translation>密码只保留到程序结束。</translation>
    </message>
    <message>
        <source>This is not the address of a WebDAV folder, such as https://cloud.example.com/dav/me/.</source>
        <translation>这不是 WebDAV 文件夹的地址，例如 https://cloud.example.com/dav/me/。</translation>
    </message>
    <message>
        <source>Signing in...</source>
        <translation>正在登录……</translation>
    </message>
    <message>
        <source>Enter the password of the account.</source>
        <translation>请输入该账号的密码。</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;Elevation</source>
        <translation>立面图(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;3D view</source>
        <translation>三维视图(&amp;3)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>新建(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>最近的项目(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>另存为(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Material</source>
        <translation>材质(&amp;M)</translation>
    </message>
    <message>
        <source>Material &amp;Library...</source>
        <translation>材质库(&amp;L)...</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>放大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>缩小(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Whole Building</source>
        <translation>显示全部(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>关于(&amp;A)</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>A small building whose elements take materials: the demo host of the material library, version %1.</source>
        <translation>一座小住宅，每个构件都可以换用材质：材质库的演示程序，版本 %1。</translation>
    </message>
    <message>
        <source>Click a part to select it; double-click it or press F4 for its materials.</source>
        <translation>单击构件进行选择；双击构件或按 F4 打开材质库。</translation>
    </message>
    <message>
        <source>The sample project cannot be opened.</source>
        <translation>示例项目无法打开。</translation>
    </message>
    <message>
        <source>Material library</source>
        <translation>材质库</translation>
    </message>
    <message numerus="yes">
        <source>%n part(s) of the material library could not be read and were left out.</source>
        <translation>
            <numerusform>材质库中有 %n 处内容无法读取，已略过。</numerusform>
        </translation>
    </message>
    <message>
        <source>Open Project</source>
        <translation>打开项目</translation>
    </message>
    <message>
        <source>Projects (*.json)</source>
        <translation>项目 (*.json)</translation>
    </message>
    <message>
        <source>The project cannot be opened.</source>
        <translation>项目无法打开。</translation>
    </message>
    <message>
        <source>Save Project</source>
        <translation>保存项目</translation>
    </message>
    <message>
        <source>The project cannot be saved.</source>
        <translation>项目无法保存。</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>未保存的修改</translation>
    </message>
    <message>
        <source>Save the changes to this project?</source>
        <translation>是否保存对当前项目的修改？</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Material Host</source>
        <translation>材质演示</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>未命名</translation>
    </message>
    <message>
        <source>%1[*] - %2 - Material Host</source>
        <translation>%1[*] - %2 - 材质演示</translation>
    </message>
    <message>
        <source>1 m = %1 pixels</source>
        <translation>1 m = %1 像素</translation>
    </message>
    <message>
        <source>Cloud &amp;Account...</source>
        <translation>云端账号(&amp;A)...</translation>
    </message>
</context>
<context>
    <name>MaterialPanel</name>
    <message>
        <source>&amp;Materials...</source>
        <translation>材质库(&amp;M)...</translation>
    </message>
    <message>
        <source>Material</source>
        <translation>材质</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>尺寸</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>不透明度</translation>
    </message>
    <message>
        <source>From</source>
        <translation>来源</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>标签</translation>
    </message>
    <message>
        <source>Nothing selected</source>
        <translation>未选择构件</translation>
    </message>
    <message>
        <source>This project</source>
        <translation>本项目</translation>
    </message>
    <message>
        <source>Material library</source>
        <translation>材质库</translation>
    </message>
    <message>
        <source>Click a part of the building.</source>
        <translation>请单击建筑的某个构件。</translation>
    </message>
    <message>
        <source>plain colour</source>
        <translation>纯色</translation>
    </message>
    <message>
        <source>%1 × %2 m</source>
        <translation>%1 × %2 m</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>No longer in the project</source>
        <translation>已不在项目中</translation>
    </message>
</context>
<context>
    <name>ProjectDocument</name>
    <message>
        <source>Material of %1</source>
        <translation>%1的材质</translation>
    </message>
    <message numerus="yes">
        <source>Materials of %n elements</source>
        <translation>
            <numerusform>%n 个构件的材质</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ProjectFile</name>
    <message>
        <source>it is not valid JSON (%1, at byte %2)</source>
        <translation>不是有效的 JSON（%1，第 %2 字节）</translation>
    </message>
    <message>
        <source>it is not a project of this program</source>
        <translation>不是本程序的项目</translation>
    </message>
    <message>
        <source>it was saved by a newer version (format %1)</source>
        <translation>由更新的版本保存（格式 %1）</translation>
    </message>
    <message>
        <source>its format version is missing</source>
        <translation>缺少格式版本</translation>
    </message>
    <message>
        <source>the source is neither project nor reference</source>
        <translation>来源既不是 project 也不是 reference</translation>
    </message>
    <message>
        <source>the id is empty or occurs twice</source>
        <translation>id 为空或出现了两次</translation>
    </message>
    <message>
        <source>the building has no such element</source>
        <translation>建筑中没有这个构件</translation>
    </message>
    <message>
        <source>there is no such material</source>
        <translation>没有这个材质</translation>
    </message>
</context>
<context>
    <name>SignIn</name>
    <message>
        <source>The server cannot be reached, or is not to be trusted.</source>
        <translation>无法连接服务器，或服务器不可信任。</translation>
    </message>
    <message>
        <source>The server does not take this user and password.</source>
        <translation>服务器不接受该用户名和密码。</translation>
    </message>
    <message>
        <source>There is no WebDAV folder at this address.</source>
        <translation>该地址没有 WebDAV 文件夹。</translation>
    </message>
    <message>
        <source>The server sends elsewhere; enter the address that it really has.</source>
        <translation>服务器已转到其他地址，请输入真实地址。</translation>
    </message>
    <message>
        <source>The server cannot do this (%1).</source>
        <translation>服务器无法完成此操作（%1）。</translation>
    </message>
</context>
</TS>
